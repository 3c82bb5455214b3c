#pragma once

#include <QItemSelectionModel>
#include <QObject>
#include <memory>

#include "kiv/export.h"
#include "kiv/globalSelection.h"
#include "kiv/observableSelection.h"
#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/qt/outlinerModel.h"

namespace Kiv_v4::qt {

/// Keeps the selection of a view over an `OutlinerModel` and an observable selection the same.
///
/// Rows that a user selects are appended in the order of selecting, several at once from top to
/// bottom. Items that other code selects become selected in the view, and the last of them becomes
/// the current item. Inserted, removed and moved rows change only the view's selection; the scene
/// decides about deleted and moved items (`host::HostScene::follow`).
///
/// Items without a row, because their parents were not opened, stay selected until a user selects
/// something else. Their rows are selected when they are read.
///
/// **Cost.** Following one appended or removed item is as fast as that step; following a
/// replacement or a batch is linear in the selection.
///
/// **Lifetime.** Belongs to `view`, which must outlive neither the model nor the selection.
class KIV_EXPORT SelectionSync : public QObject
{
    Q_OBJECT

public:
    /// `view` is the selection model of a view over `model`. At first the view takes over the
    /// selection.
    SelectionSync(OutlinerModel& model, QItemSelectionModel& view,
                  ObservableSelection::Ptr selection = GlobalSelection::get());
    ~SelectionSync() override;

private:
    KIV_HIDDEN void take(const QItemSelection& selected, const QItemSelection& deselected);
    KIV_HIDDEN void follow(const Notification& notification);
    KIV_HIDDEN void show(const Path& path, bool isSelected);
    KIV_HIDDEN void showAll();
    KIV_HIDDEN void showAllLater();
    KIV_HIDDEN void showRows(const QModelIndex& parent, int first, int last);
    KIV_HIDDEN void setCurrent();

    OutlinerModel& _model;
    QItemSelectionModel& _view;
    const ObservableSelection::Ptr _selection;
    const Observer::Ptr _observer;
    bool _isTaking = false;  ///< Changing the selection as the view does.
    bool _isShowing = false; ///< Changing the view as the selection does.
    bool _isStale = false;   ///< The view may show another selection.
    int _nbReceived = 0;     ///< Changes of the selection during `take`.
};

} // namespace Kiv_v4::qt
