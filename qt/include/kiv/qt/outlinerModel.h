#pragma once

#include <QAbstractItemModel>
#include <memory>

#include "kiv/export.h"
#include "kiv/host/sceneTree.h"
#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

/// Scenes in windows: item models, actions and a view for hosts that are built with Qt 6 Widgets.
///
/// Exceptions of run-times never pass through Qt. They are written to the log, from which a
/// `host::ErrorChannel` receives them; so are the refusals of run-times. All edits are commands for
/// the `UndoableCommandMgr`, which must be installed.
namespace Kiv_v4::qt {

/// The scene as a model for a `QTreeView`: the top items of all run-times and their descendants. It
/// follows the installed scene, which should be a `host::HostScene`.
///
///     qt::OutlinerModel model;
///     QTreeView view;
///     view.setModel(&model);
///     const qt::SelectionSync sync(model, *view.selectionModel());
///
/// Users can edit names, drag rows to other places and parents, and show and hide items by the
/// check box of their visibility: each edit is one undoable step. Icons, fonts, colours and
/// tooltips come from the run-time's `UIInfoHandler`; an item without an icon of its own gets one
/// for its type.
///
/// **Cost.** The model reads rows when they are shown, a thousand at a time, so a view over a
/// million items opens at once.
///
/// **Lifetime.** Indexes follow the rules of Qt; persistent indexes stay valid when their items are
/// renamed and moved.
class KIV_EXPORT OutlinerModel : public QAbstractItemModel, private host::SceneTree::Listener
{
    Q_OBJECT

public:
    /// A row of the mirror of the scene.
    using Node = host::SceneTree::Node;

    /// The columns, and their number.
    enum Column { NameColumn, TypeColumn, RunTimeColumn, VisibilityColumn, ColumnCount };

    /// The type of the data of drags: the path strings of the items.
    static constexpr const char* kMimeType = "application/x-kiv-paths";

    explicit OutlinerModel(QObject* parent = nullptr);
    ~OutlinerModel() override;

    /// Returns the tree whose rows the model shows, for its filter and for fetching.
    [[nodiscard]] host::SceneTree& tree() { return _tree; }

    /// Returns the index of the item at `path`; an invalid one if its row was not read yet.
    [[nodiscard]] QModelIndex indexOf(const Path& path, int column = NameColumn) const;

    /// Reads the rows on the way to the item at `path` and returns its index; an invalid one if
    /// there is no such item.
    QModelIndex reveal(const Path& path);

    /// Returns the path of the index's item; empty for an invalid index.
    [[nodiscard]] Path path(const QModelIndex& index) const;

    /// Returns the index's item; null for an invalid index and for a deleted item.
    [[nodiscard]] SceneItem::Ptr item(const QModelIndex& index) const;

    /// Returns whether rows are being inserted, removed or moved: a view that changes its selection
    /// meanwhile does so because rows are missing, not because a user selects.
    [[nodiscard]] bool isChanging() const noexcept { return _isChanging; }

    /// As in `QAbstractItemModel`.
    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Renames the item, or shows or hides it. Returns false if its run-time refuses.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    /// As in `QAbstractItemModel`: drags carry `kMimeType`.
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override;
    [[nodiscard]] bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row,
                                       int column, const QModelIndex& parent) const override;

    /// Moves the dragged items, in the order of their rows, before the row, or after the last child
    /// for a row of -1, as one step. Moves none and returns false if one of them was deleted.
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

private:
    void beginInsert(const Node& parent, std::size_t first, std::size_t count) override;
    void endInsert() override;
    void beginRemove(const Node& parent, std::size_t first, std::size_t count) override;
    void endRemove() override;
    void beginMove(const Node& node, const Node& newParent, std::size_t newRow) override;
    void endMove() override;
    void changed(const Node& node) override;

    KIV_HIDDEN QModelIndex indexOf(const Node& node, int column) const;
    KIV_HIDDEN Node& nodeOf(const QModelIndex& index) const;
    KIV_HIDDEN void visibilityChanged(const Path& path);

    host::SceneTree _tree;
    bool _isChanging = false;
    const Observer::Ptr _visibilityObserver;
};

} // namespace Kiv_v4::qt
