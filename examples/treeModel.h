#pragma once

#include <QAbstractItemModel>

#include "kiv/host/sceneTree.h"
#include "kiv/sceneItem.h"

/// The scene as an item model with two columns: all that a toolkit's model over `SceneTree` needs.
/// `kiv::qt` has a larger one with icons, editing and dragging.
class TreeModel : public QAbstractItemModel, private Kiv_v4::host::SceneTree::Listener
{
public:
    using Node = Kiv_v4::host::SceneTree::Node;

    TreeModel() { _tree.addListener(*this); }
    ~TreeModel() override { _tree.removeListener(*this); }

    [[nodiscard]] Kiv_v4::host::SceneTree& tree() { return _tree; }

    [[nodiscard]] QModelIndex indexOf(const Node& node, int column = 0) const
    {
        return node.parent()
                   ? createIndex(static_cast<int>(node.row()), column, const_cast<Node*>(&node))
                   : QModelIndex();
    }

    [[nodiscard]] Node& nodeOf(const QModelIndex& index) const
    {
        return index.isValid() ? *static_cast<Node*>(index.internalPointer()) : _tree.root();
    }

    QModelIndex index(int row, int column, const QModelIndex& parent) const override
    {
        return hasIndex(row, column, parent)
                   ? indexOf(nodeOf(parent).child(static_cast<std::size_t>(row)), column)
                   : QModelIndex();
    }

    QModelIndex parent(const QModelIndex& index) const override
    {
        const auto* above = nodeOf(index).parent();
        return above ? indexOf(*above) : QModelIndex();
    }

    int rowCount(const QModelIndex& parent) const override
    {
        return parent.column() > 0 ? 0 : static_cast<int>(nodeOf(parent).nbRows());
    }

    int columnCount(const QModelIndex& /*parent*/) const override { return 2; }

    bool hasChildren(const QModelIndex& parent) const override
    {
        return parent.column() <= 0 &&
               (nodeOf(parent).nbRows() > 0 || _tree.canFetch(nodeOf(parent)));
    }

    bool canFetchMore(const QModelIndex& parent) const override
    {
        return parent.column() <= 0 && _tree.canFetch(nodeOf(parent));
    }

    void fetchMore(const QModelIndex& parent) override { _tree.fetch(nodeOf(parent), 1000); }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || role != Qt::DisplayRole) {
            return {};
        }
        const auto& node = nodeOf(index);
        const auto text = index.column() == 0 ? node.name()
                          : node.item()       ? node.item()->nodeType()
                                              : std::string();
        return QString::fromStdString(text);
    }

private:
    void beginInsert(const Node& parent, std::size_t first, std::size_t count) override
    {
        beginInsertRows(indexOf(parent), static_cast<int>(first),
                        static_cast<int>(first + count - 1));
    }
    void endInsert() override { endInsertRows(); }

    void beginRemove(const Node& parent, std::size_t first, std::size_t count) override
    {
        beginRemoveRows(indexOf(parent), static_cast<int>(first),
                        static_cast<int>(first + count - 1));
    }
    void endRemove() override { endRemoveRows(); }

    void beginMove(const Node& node, const Node& newParent, std::size_t newRow) override
    {
        const auto row = node.row();
        const auto isDown = node.parent() == &newParent && newRow > row; // counted with itself
        beginMoveRows(indexOf(*node.parent()), static_cast<int>(row), static_cast<int>(row),
                      indexOf(newParent), static_cast<int>(newRow + (isDown ? 1 : 0)));
    }
    void endMove() override { endMoveRows(); }

    void changed(const Node& node) override
    {
        emit dataChanged(indexOf(node), indexOf(node, columnCount({}) - 1));
    }

    Kiv_v4::host::SceneTree _tree;
};
