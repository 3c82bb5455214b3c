#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "kiv/detail/childTable.h"
#include "kiv/detail/poolAllocator.h"
#include "kiv/path.h"
#include "kiv/pathComponent.h"

namespace Kiv_v4 {

template <class T>
class Trie;

/// One node of a `Trie`. It either carries data or lies on the way to a node that does.
///
/// **Lifetime.** Nodes live in shared pointers: a parent holds its children, a child refers back
/// weakly. A node that the caller holds outlives its removal from the tree and the tree itself, and
/// keeps its own subtree.
///
/// **Errors.** `add`, `rename` and `move` need this node (for `move`, the new parent too) to be
/// owned by a shared pointer and throw `std::bad_weak_ptr` otherwise, before anything changes.
/// Nodes passed in are not null.
///
/// **Cost.** Queries for one child are constant. No operation recurses, whatever the depth.
template <class T>
class TrieNode : public std::enable_shared_from_this<TrieNode<T>>
{
public:
    using Ptr = std::shared_ptr<TrieNode<T>>;

    /// No component, as a root.
    TrieNode() = default;
    explicit TrieNode(const PathComponent& component) : _component(component) {}

    /// Null for a root and when the parent is gone.
    [[nodiscard]] Ptr parent() const noexcept { return _parent.lock(); }

    /// What the node hangs under in its parent; the null component for a root.
    [[nodiscard]] PathComponent component() const noexcept { return _component; }

    /// Hangs `child` under its own component, in the place of any child already there, and makes
    /// this its parent. A replaced child still names this node as its parent.
    void add(const Ptr& child);

    /// Erases whatever child hangs under `child`'s component, which need not be `child`; then
    /// `child` has no parent, whether it hung here or not.
    void remove(const Ptr& child) noexcept;

    /// Whether there is a child of that name.
    [[nodiscard]] bool contains(const PathComponent& component) const noexcept
    {
        return child(component) != nullptr;
    }

    /// The child under that component, or null.
    [[nodiscard]] Ptr operator[](const PathComponent& component) const noexcept
    {
        return _children.get(component);
    }

    /// The children's components, in the order in which the names were interned.
    [[nodiscard]] std::vector<PathComponent> childrenComponents() const;

    /// The number of children.
    [[nodiscard]] std::size_t size() const noexcept { return _children.size(); }

    /// The number of nodes of the subtree, this one included. Linear in it.
    [[nodiscard]] std::size_t treeSize() const;

    /// Whether there are no children; data does not count.
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// Hangs the node under another component of the same parent, in the place of any child already
    /// there. Without a parent, only the component changes.
    void rename(const PathComponent& component);

    /// Hangs the node under `component` of `newParent`, which must not lie in its subtree; null for
    /// no parent. When that is its parent already, nothing happens, and its component stays.
    void move(const PathComponent& component, const Ptr& newParent);

    /// Gives the node a value.
    void setData(const T& data)
    {
        _data = data;
        _hasData = true;
    }

    /// The value last set, also after `clearData()`; a default-made one before that.
    [[nodiscard]] const T& data() const noexcept { return _data; }
    /// Whether there is a value: one was set, and not cleared since.
    [[nodiscard]] bool hasData() const noexcept { return _hasData; }

    /// Only `hasData()` changes.
    void clearData() noexcept { _hasData = false; }

    /// The depth of the lowest proper ancestor that all data at and below this node share, when the
    /// node's parent is at `depth`: see `Trie::closestCommonAncestor`.
    [[nodiscard]] int closestCommonAncestor(int depth) const noexcept;

    /// Leaves the node without component, parent, children and data. It may still stand in its
    /// parent.
    void clear() noexcept;

private:
    friend class Trie<T>;
    friend class detail::ChildTable<TrieNode<T>>;

    /// The child under that component, or null, without a share of it.
    [[nodiscard]] TrieNode* child(const PathComponent& component) const noexcept
    {
        return _children.find(component);
    }

    void attach(Ptr child);

    // What a walk reads comes first, in one cache line.
    detail::ChildTable<TrieNode<T>> _children;
    bool _hasData = false;
    T _data{};
    PathComponent _component;
    std::weak_ptr<TrieNode<T>> _parent;
};

/// Values by path, one tree level per component, so that questions about a path, its ancestors and
/// its descendants take one walk along the path. Segments do not count: paths of the same
/// components are the same to a trie.
///
///     Trie<int> trie;
///     trie.add(path, 7);
///     trie.containsAncestor(path + "child");      // true
///     trie.containsDescendant(path.popSegment()); // true
///     trie.find(path)->data();                    // 7
///
/// **Invariants.** Every node but the root carries data or has children; operations that take data
/// or children away prune the nodes that this leaves without either. Whoever uses `createNode` or
/// changes a node directly keeps it so: the questions about descendants take every node for data.
///
/// **Lifetime.** Nodes handed out live for as long as someone holds them; see `TrieNode`. A
/// moved-from trie is empty and usable.
///
/// **Cost.** Linear in the path's length unless said otherwise, independent of the number of
/// values. When an allocation fails, or `T` throws on being copied, the trie stays as it was.
template <class T>
class Trie
{
public:
    /// The nodes, held by shared pointer.
    using Node = TrieNode<T>;
    using NodePtr = typename Node::Ptr;

    Trie() : _root(makeNode()) {}
    Trie(Trie&& other) : _root(std::exchange(other._root, makeNode())) {}
    Trie(const Trie&) = delete;
    ~Trie() = default;

    /// Takes the nodes of `other`.
    Trie& operator=(Trie&& other)
    {
        auto fresh = makeNode();
        _root = std::exchange(other._root, std::move(fresh));
        return *this;
    }
    Trie& operator=(const Trie&) = delete;

    /// The node of the path without components. Never null, always the same but for moves.
    [[nodiscard]] NodePtr root() const noexcept { return _root; }

    /// Stores `data` at `path`, over what was there, and gives the node. A path without components
    /// stores on the root.
    NodePtr add(const Path& path, const T& data);

    /// The path's node, made without data, with the nodes on the way, when there is none.
    NodePtr createNode(const Path& path) { return findOrCreate(path)->shared_from_this(); }

    /// Takes the data at `path` away and gives its node, whose data can still be read and which may
    /// have left the tree. Null, and no change, when there is no data at `path`.
    NodePtr remove(const Path& path);

    /// The path's node if it has data, or null.
    [[nodiscard]] NodePtr find(const Path& path) const
    {
        auto* const node = walk(path);
        return node && node->hasData() ? node->shared_from_this() : nullptr;
    }

    /// The path's node, with or without data, or null.
    [[nodiscard]] NodePtr node(const Path& path) const
    {
        auto* const found = walk(path);
        return found ? found->shared_from_this() : nullptr;
    }

    /// Whether there is data at `path`.
    [[nodiscard]] bool contains(const Path& path) const noexcept
    {
        const auto* const node = walk(path);
        return node && node->hasData();
    }

    /// Whether there is data below `path`; false for a path without components.
    [[nodiscard]] bool containsDescendant(const Path& path) const noexcept
    {
        return containsDescendantHelper<false>(path);
    }

    /// Whether there is data at or below `path`; false for a path without components.
    [[nodiscard]] bool containsDescendantInclusive(const Path& path) const noexcept
    {
        return containsDescendantHelper<true>(path);
    }

    /// The data at and below `path`: that of a node before those below it, siblings in the order in
    /// which their names were interned. A path without components gives all data. Linear in what is
    /// below, but for the sorting of siblings.
    [[nodiscard]] std::vector<T> dataUnder(const Path& path) const;

    /// Whether there is data at a proper ancestor of `path`, other than the root.
    [[nodiscard]] bool containsAncestor(const Path& path) const noexcept
    {
        return containsAncestorHelper<false>(path);
    }

    /// Whether there is data at `path` or one of its ancestors, other than the root.
    [[nodiscard]] bool containsAncestorInclusive(const Path& path) const noexcept
    {
        return containsAncestorHelper<true>(path);
    }

    /// The number of components of the longest path that is a proper ancestor of all stored paths:
    /// -1 for an empty trie, 0 when they share no first component, one less than its own size for a
    /// single path. Linear in the result.
    [[nodiscard]] int closestCommonAncestor() const noexcept
    {
        return _root->closestCommonAncestor(-1);
    }

    /// Moves the node at `oldPath`, with its subtree, to `newPath`, in the place of whatever is
    /// there, makes the nodes on the way and prunes what it leaves; gives the node. When both paths
    /// have the same parent nothing happens, and the node keeps its component. Null, and no change,
    /// when there is no node at `oldPath` and when `newPath` lies below it. Throws
    /// `InvalidOperationOnPath` when `newPath` has no components.
    NodePtr move(const Path& oldPath, const Path& newPath);

    /// Drops all nodes but the root. Linear in their number.
    void clear() noexcept { _root->clear(); }

    /// The number of nodes, the root included: 1 for an empty trie. Linear in it.
    [[nodiscard]] std::size_t size() const { return _root->treeSize(); }

    /// Whether the root has no children.
    [[nodiscard]] bool empty() const noexcept { return _root->empty(); }

private:
    template <class... Arguments>
    [[nodiscard]] static NodePtr makeNode(Arguments&&... arguments)
    {
        return std::allocate_shared<Node>(detail::PoolAllocator<Node>(),
                                          std::forward<Arguments>(arguments)...);
    }

    [[nodiscard]] Node* walk(const Path& path) const noexcept;
    [[nodiscard]] Node* findOrCreate(const Path& path);
    void cleanUpNode(NodePtr node) noexcept;

    template <bool Inclusive>
    [[nodiscard]] bool containsDescendantHelper(const Path& path) const noexcept;
    template <bool Inclusive>
    [[nodiscard]] bool containsAncestorHelper(const Path& path) const noexcept;

    NodePtr _root;
};

template <class T>
void TrieNode<T>::add(const Ptr& child)
{
    const auto self = this->shared_from_this();
    attach(child);
}

/// `add` for a node that is known to be owned by a shared pointer.
template <class T>
void TrieNode<T>::attach(Ptr child)
{
    _children.reserveOne();
    child->_parent = this->weak_from_this();
    const auto& component = child->_component;
    const auto replaced = _children.put(component, std::move(child));
}

template <class T>
void TrieNode<T>::remove(const Ptr& child) noexcept
{
    // The reference may lead into the table.
    const auto kept = child;
    const auto erased = _children.take(kept->_component);
    if (_children.size() == 0) {
        _children.clear();
    }
    kept->_parent.reset();
}

template <class T>
std::vector<PathComponent> TrieNode<T>::childrenComponents() const
{
    std::vector<PathComponent> components;
    components.reserve(size());
    _children.forEach([&](const auto& slot) { components.push_back(slot.component); });
    std::sort(components.begin(), components.end(),
              [](const auto& left, const auto& right) { return left.id() < right.id(); });
    return components;
}

template <class T>
std::size_t TrieNode<T>::treeSize() const
{
    std::size_t count = 0;
    std::vector<const TrieNode*> open{this};
    while (!open.empty()) {
        const auto* const node = open.back();
        open.pop_back();
        ++count;
        node->_children.forEach([&](const auto& slot) { open.push_back(slot.node.get()); });
    }
    return count;
}

template <class T>
void TrieNode<T>::rename(const PathComponent& component)
{
    const auto self = this->shared_from_this();
    const auto holder = parent();
    Ptr erased;
    Ptr replaced;
    if (holder) {
        holder->_children.reserveOne();
        erased = holder->_children.take(_component);
    }
    _component = component;
    if (holder) {
        replaced = holder->_children.put(_component, self);
    }
}

template <class T>
void TrieNode<T>::move(const PathComponent& component, const Ptr& newParent)
{
    const auto holder = parent();
    if (holder == newParent) {
        return;
    }
    const auto self = this->shared_from_this();
    std::weak_ptr<TrieNode> next;
    if (newParent) {
        next = newParent->shared_from_this();
        newParent->_children.reserveOne();
    }
    if (holder) {
        holder->remove(self);
    }
    _component = component;
    if (newParent) {
        const auto replaced = newParent->_children.put(_component, self);
    }
    _parent = std::move(next);
}

template <class T>
int TrieNode<T>::closestCommonAncestor(int depth) const noexcept
{
    const auto* node = this;
    while (!node->hasData() && node->size() == 1) {
        const TrieNode* only = nullptr;
        node->_children.forEach([&](const auto& slot) { only = slot.node.get(); });
        node = only;
        ++depth;
    }
    return node->hasData() || node->empty() ? depth : depth + 1;
}

template <class T>
void TrieNode<T>::clear() noexcept
{
    // Dropping the children may drop the last holder of this node.
    const auto self = this->weak_from_this().lock();
    _component = PathComponent();
    _parent.reset();
    _hasData = false;
    _children.clear();
}

template <class T>
typename Trie<T>::NodePtr Trie<T>::add(const Path& path, const T& data)
{
    auto node = findOrCreate(path)->shared_from_this();
    try {
        node->setData(data);
    } catch (...) {
        cleanUpNode(std::move(node));
        throw;
    }
    return node;
}

template <class T>
typename Trie<T>::NodePtr Trie<T>::remove(const Path& path)
{
    auto node = find(path);
    if (node) {
        node->clearData();
        cleanUpNode(node);
    }
    return node;
}

template <class T>
typename Trie<T>::NodePtr Trie<T>::move(const Path& oldPath, const Path& newPath)
{
    const auto newParentPath = newPath.pop();
    auto node = newParentPath.startsWith(oldPath) ? nullptr : this->node(oldPath);
    if (node) {
        const auto newParent = createNode(newParentPath);
        auto oldParent = node->parent();
        try {
            node->move(newPath.back(), newParent);
        } catch (...) {
            cleanUpNode(newParent);
            throw;
        }
        if (oldParent) {
            cleanUpNode(std::move(oldParent));
        }
    }
    return node;
}

/// The path's node, or null, without a share of it.
template <class T>
typename Trie<T>::Node* Trie<T>::walk(const Path& path) const noexcept
{
    auto* node = _root.get();
    for (const auto& component : path) {
        node = node->child(component);
        if (!node) {
            return nullptr;
        }
    }
    return node;
}

/// The path's node, made when there is none. New nodes are attached to one another before they are
/// attached to the tree, so that a failure changes nothing.
template <class T>
typename Trie<T>::Node* Trie<T>::findOrCreate(const Path& path)
{
    auto* node = _root.get();
    NodePtr branch;
    auto* last = node;
    for (const auto& component : path) {
        if (branch) {
            last->attach(makeNode(component));
            last = last->child(component);
        } else if (auto* const child = node->child(component)) {
            node = last = child;
        } else {
            branch = makeNode(component);
            last = branch.get();
        }
    }
    if (branch) {
        node->attach(std::move(branch));
    }
    return last;
}

/// Takes the node out of the tree, and its ancestors after it, for as long as they have neither
/// data nor children and are not the root. Ends at a node that a move has put another one in the
/// place of.
template <class T>
void Trie<T>::cleanUpNode(NodePtr node) noexcept
{
    while (node != _root && node->empty() && !node->hasData()) {
        auto parent = node->parent();
        if (!parent || parent->child(node->_component) != node.get()) {
            return;
        }
        parent->remove(node);
        node = std::move(parent);
    }
}

template <class T>
std::vector<T> Trie<T>::dataUnder(const Path& path) const
{
    std::vector<T> found;
    std::vector<const Node*> open;
    if (const auto* const top = walk(path)) {
        open.push_back(top);
    }
    while (!open.empty()) {
        const auto* const node = open.back();
        open.pop_back();
        if (node->hasData()) {
            found.push_back(node->data());
        }
        const auto components = node->childrenComponents();
        for (auto component = components.rbegin(); component != components.rend(); ++component) {
            open.push_back(node->child(*component));
        }
    }
    return found;
}

template <class T>
template <bool Inclusive>
bool Trie<T>::containsDescendantHelper(const Path& path) const noexcept
{
    const auto* const node = path.empty() ? nullptr : walk(path);
    return node && (Inclusive || !node->empty());
}

template <class T>
template <bool Inclusive>
bool Trie<T>::containsAncestorHelper(const Path& path) const noexcept
{
    const auto* node = _root.get();
    const auto* const end = path.end() - (Inclusive || path.empty() ? 0 : 1);
    for (const auto* component = path.begin(); component != end; ++component) {
        node = node->child(*component);
        if (!node) {
            return false;
        }
        if (node->hasData()) {
            return true;
        }
    }
    return false;
}

} // namespace Kiv_v4
