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
/// What a user selects is appended in the order of selecting, rows at once from top to bottom; what
/// others select becomes selected in the view, and the last of it the current item. Rows that come,
/// go and move change the view's selection alone: what becomes of items that are deleted and moved
/// is up to the scene (`host::HostScene::follow`).
///
/// Items without a row, because nobody has opened their parents, stay selected until a user selects
/// something else instead. Their rows are selected when they are read.
///
/// **Cost** of following a change of others: of single steps, that of the step; of replacements and
/// batches, linear in the selection.
///
/// **Lifetime.** Belongs to `view`, which must outlive neither the model nor the selection.
class KIV_EXPORT SelectionSync : public QObject
{
    Q_OBJECT

public:
    /// `view` is the selection model of a view over `model`. The view takes the selection as it is.
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
    bool _isTaking = false;  ///< The view's changes into the selection.
    bool _isShowing = false; ///< The selection's changes in the view.
    bool _isStale = false;   ///< The view may show another selection.
    int _nbHeard = 0;        ///< Changes of the selection during `take`.
};

} // namespace Kiv_v4::qt
