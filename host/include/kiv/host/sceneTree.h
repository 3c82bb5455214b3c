#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "kiv/childFilter.h"
#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

/// A mirror of the scene's structure for outliners, without any toolkit: nodes that keep their
/// identity while their items are renamed, moved and reordered, in rows under their parents, and
/// the news of every change in the form that item models want.
///
///     host::SceneTree tree;
///     tree.addListener(model); // begins and ends of insertions, removals and moves
///     tree.fetch(tree.root()); // its children: the top items of all run-times
///     tree.root().child(0).row();
///
/// The rows under a node are those that were fetched, from the first on; an outliner fetches when a
/// node is opened, and further when the user scrolls down. Where a gateway leads into another
/// run-time, its items are among the gateway's children.
///
/// **Following.** The tree follows the installed scene, which should be a `HostScene`: with it,
/// changes come in the order in which they happened. What cannot be taken from the news is compared
/// with the scene, child by child, and the listener hears of the difference alone, so that what is
/// open and selected stays so. Nodes of a run-time that leaves are removed before it goes.
///
/// **Lifetime.** A node is good until its removal has ended. The scene must outlive the tree's use,
/// not the tree.
///
/// **Cost.** The row of a node, and the node at a row, are logarithmic in the number of rows.
/// Following an addition, a rename or a deletion does not depend on the number of siblings where
/// the run-time tells positions (`Hierarchy_v4_2`), and is linear in it otherwise. A rename or a
/// move costs as much as there are nodes under it.
///
/// **Reentrancy.** Listeners may read the tree, and edit the scene; with a `HostScene`, what they
/// edit is followed afterwards. While they are told of a change, nothing can be fetched.
class KIV_EXPORT SceneTree
{
public:
    class Listener;
    class Node;

    SceneTree();
    SceneTree(const SceneTree&) = delete;
    SceneTree& operator=(const SceneTree&) = delete;
    ~SceneTree();

    /// The node above the top items. It has no item and no path.
    [[nodiscard]] Node& root() const noexcept;

    /// The node of the item at `path`; null when it was not fetched.
    [[nodiscard]] Node* find(const Path& path) const;

    /// The node of the item at `path`, with everything on the way to it fetched; null when there is
    /// no such item, or the filter hides it.
    Node* reveal(const Path& path);

    /// Whether the node has, or may have, children that are not among its rows; false while
    /// listeners are told of a change.
    [[nodiscard]] bool canFetch(const Node& node) const;

    /// Adds at most `count` further children to the rows of the node, and tells the listeners.
    void fetch(Node& node, std::size_t count = kFetchAll);

    /// Without a number, all children are fetched.
    static constexpr std::size_t kFetchAll = SIZE_MAX;

    /// Shows of each item's children those that the filter lets through; at first, and with an
    /// empty filter, all. The rows follow by comparison.
    void setFilter(const ChildFilter& filter);
    [[nodiscard]] const ChildFilter& filter() const noexcept;

    /// Compares all rows with the scene: for what no run-time announced.
    void refresh();

    /// Lets `listener` hear of changes until it is removed, which must be before it dies and not
    /// while it is called.
    void addListener(Listener& listener);
    void removeListener(Listener& listener);

    struct State;

private:
    const std::unique_ptr<State> _state;
};

/// An item and its rows of children.
class KIV_EXPORT SceneTree::Node
{
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    /// The item, made when it is asked for; null when the run-time makes none, and for the root.
    [[nodiscard]] const SceneItem::Ptr& item() const;

    /// Where the item is; empty for the root.
    [[nodiscard]] const Path& path() const noexcept { return _path; }

    /// The last component of the path.
    [[nodiscard]] std::string name() const;

    /// Null for the root.
    [[nodiscard]] Node* parent() const noexcept { return _parent; }

    /// The place among the parent's rows, from 0.
    [[nodiscard]] std::size_t row() const noexcept;

    /// The number of rows.
    [[nodiscard]] std::size_t nbRows() const noexcept { return _rows ? _rows->_count : 0; }

    /// The node at `row`, which is less than `nbRows()`.
    [[nodiscard]] Node& child(std::size_t row) const noexcept;

private:
    friend struct SceneTree::State;
    friend class Rows;

    Node() = default;
    explicit Node(const Path& path, SceneItem::Ptr item = {}) : _path(path), _item(std::move(item))
    {}
    ~Node() = default;

    Path _path;
    mutable SceneItem::Ptr _item; ///< Null until it is asked for.
    Node* _parent = nullptr;
    Node* _rows = nullptr;    ///< The top of the balanced tree of the children.
    bool _isComplete = false; ///< Whether all children are among the rows.
    bool _isOpened = false;   ///< Whether children were fetched.
    bool _isGone = false;     ///< Deleted, by what the notification at hand says so far.

    // The node's own place in the balanced tree of its siblings.
    Node* _above = nullptr;
    Node* _left = nullptr;
    Node* _right = nullptr;
    std::size_t _count = 1; ///< The nodes at and below it there.
    std::uint32_t _priority = 0;
};

/// What an item model does when the tree changes. Rows that are about to change are as before in a
/// call that begins a change, and as after in the one that ends it.
class KIV_EXPORT SceneTree::Listener
{
public:
    Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    virtual ~Listener();

    /// `count` rows come in so that the first of them is at `first`.
    virtual void beginInsert(const Node& parent, std::size_t first, std::size_t count) = 0;
    virtual void endInsert() = 0;

    /// `count` rows go, from `first` on, with all under them.
    virtual void beginRemove(const Node& parent, std::size_t first, std::size_t count) = 0;
    virtual void endRemove() = 0;

    /// The node goes to `newParent`, where it is at `newRow` afterwards. The new parent is not the
    /// node, nor under it.
    virtual void beginMove(const Node& node, const Node& newParent, std::size_t newRow) = 0;
    virtual void endMove() = 0;

    /// The item's name or anything else about it but for its children is another.
    virtual void changed(const Node& node) = 0;
};

} // namespace Kiv_v4::host
