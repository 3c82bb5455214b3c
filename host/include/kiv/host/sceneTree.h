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

/// A mirror of the scene's structure for outliners, independent of any toolkit: nodes that keep
/// their identity while their items are renamed, moved and reordered, in rows under their parents,
/// and notifications of every change in the form that item models need.
///
///     host::SceneTree tree;
///     tree.addListener(model); // begins and ends of insertions, removals and moves
///     tree.fetch(tree.root()); // its children: the top items of all run-times
///     tree.root().child(0).row();
///
/// The rows under a node are the children that were fetched, from the first on; an outliner fetches
/// when a node is opened, and more when the user scrolls down. The children of a gateway include
/// the items of the other run-time.
///
/// **Following.** The tree follows the installed scene, which should be a `HostScene`, since that
/// delivers changes in the order in which they happened. If a notification does not contain enough,
/// the tree compares its rows with the scene, child by child, and announces only the difference, so
/// that open and selected nodes stay so. It removes the nodes of a run-time before that is
/// unregistered.
///
/// **Lifetime.** A node is valid until its removal has ended. The scene must outlive the last use
/// of the tree, but may be destroyed before the tree.
///
/// **Cost.** The row of a node, and the node at a row, are logarithmic in the number of rows.
/// Following an addition, a rename or a deletion does not depend on the number of siblings if the
/// run-time has `Hierarchy_v4_2`, and is linear in it otherwise. A rename or a move is linear in
/// the number of nodes under it.
///
/// **Reentrancy.** Listeners may read the tree, and edit the scene; with a `HostScene`, the tree
/// follows their edits afterwards. During a call to a listener, nothing can be fetched.
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

    /// The node of the item at `path`; null if it was not fetched.
    [[nodiscard]] Node* find(const Path& path) const;

    /// Fetches everything on the way to the item at `path` and returns its node; null if there is
    /// no such item, or the filter hides it.
    Node* reveal(const Path& path);

    /// Whether the node has, or may have, children that are not among its rows; false during a call
    /// to a listener.
    [[nodiscard]] bool canFetch(const Node& node) const;

    /// Adds at most `count` further children to the rows of the node, and notifies the listeners.
    void fetch(Node& node, std::size_t count = kFetchAll);

    /// The default count: fetches all children.
    static constexpr std::size_t kFetchAll = SIZE_MAX;

    /// Shows only the children that pass the filter; at first, and with an empty filter, all.
    /// Compares all rows with the scene.
    void setFilter(const ChildFilter& filter);
    [[nodiscard]] const ChildFilter& filter() const noexcept;

    /// Compares all rows with the scene, to find changes that no run-time announced.
    void refresh();

    /// Registers `listener`, which must be removed before it is destroyed and must not be removed
    /// while it is called.
    void addListener(Listener& listener);
    void removeListener(Listener& listener);

    struct KIV_HIDDEN State;

private:
    const std::unique_ptr<State> _state;
};

/// An item and its rows of children.
class KIV_EXPORT SceneTree::Node
{
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    /// The item, made by the first call; null if the run-time makes none, and for the root.
    [[nodiscard]] const SceneItem::Ptr& item() const;

    /// The path of the item; empty for the root.
    [[nodiscard]] const Path& path() const noexcept { return _path; }

    /// The last component of the path.
    [[nodiscard]] std::string name() const;

    /// The parent; null for the root.
    [[nodiscard]] Node* parent() const noexcept { return _parent; }

    /// The place among the parent's rows, from 0.
    [[nodiscard]] std::size_t row() const noexcept;

    /// The number of rows.
    [[nodiscard]] std::size_t nbRows() const noexcept { return _rows ? _rows->_count : 0; }

    /// The node at `row`, which must be less than `nbRows()`.
    [[nodiscard]] Node& child(std::size_t row) const noexcept;

private:
    friend struct SceneTree::State;
    friend class Rows;

    Node() = default;
    explicit Node(const Path& path, SceneItem::Ptr item = {}) : _path(path), _item(std::move(item))
    {}
    ~Node() = default;

    Path _path;
    mutable SceneItem::Ptr _item; ///< Null until the first call of `item`.
    Node* _parent = nullptr;
    Node* _rows = nullptr;    ///< The top of the balanced tree of the children.
    bool _isComplete = false; ///< Whether all children are among the rows.
    bool _isOpened = false;   ///< Whether children were fetched.
    bool _isGone = false;     ///< Deleted, according to the notification in progress.

    // The node's own place in the balanced tree of its siblings.
    Node* _above = nullptr;
    Node* _left = nullptr;
    Node* _right = nullptr;
    std::size_t _count = 1; ///< The number of nodes at and below it there.
    std::uint32_t _priority = 0;
};

/// The reactions of an item model to changes of the tree. The call that begins a change comes while
/// the rows are still unchanged, the call that ends it once they are changed.
class KIV_EXPORT SceneTree::Listener
{
public:
    Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    virtual ~Listener();

    /// `count` rows will be inserted so that the first of them is at `first`.
    virtual void beginInsert(const Node& parent, std::size_t first, std::size_t count) = 0;
    virtual void endInsert() = 0;

    /// `count` rows will be removed, from `first` on, with their descendants.
    virtual void beginRemove(const Node& parent, std::size_t first, std::size_t count) = 0;
    virtual void endRemove() = 0;

    /// The node will move to `newParent`, where it is at `newRow` afterwards. The new parent is not
    /// the node, nor under it.
    virtual void beginMove(const Node& node, const Node& newParent, std::size_t newRow) = 0;
    virtual void endMove() = 0;

    /// The item's name, or anything else about it except its children, changed.
    virtual void changed(const Node& node) = 0;
};

} // namespace Kiv_v4::host
