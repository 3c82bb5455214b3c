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

/// One node of a `Trie`. It has data or lies on the way to a node with data.
///
/// **Lifetime.** Shared pointers hold the nodes: a parent holds its children, a child refers back
/// weakly. A node that the caller holds outlives its removal from the tree and the tree itself, and
/// keeps its own subtree.
///
/// **Errors.** For `add`, `rename` and `move`, a shared pointer must own this node (for `move`, the
/// new parent too); otherwise they throw `std::bad_weak_ptr` and change nothing. Node arguments
/// must not be null, except the new parent of `move`.
///
/// **Cost.** Queries for one child are constant. No operation recurses, whatever the depth.
template <class T>
class TrieNode : public std::enable_shared_from_this<TrieNode<T>>
{
public:
    using Ptr = std::shared_ptr<TrieNode<T>>;

    /// Makes a node without a component, such as a root.
    TrieNode() = default;
    explicit TrieNode(const PathComponent& component) : _component(component) {}

    /// The parent; null for a root and if the parent no longer exists.
    [[nodiscard]] Ptr parent() const noexcept { return _parent.lock(); }

    /// The component under which the node is attached to its parent; the null component for a root.
    [[nodiscard]] PathComponent component() const noexcept { return _component; }

    /// Attaches `child` under the component of `child`, replacing any child already there, and
    /// becomes its parent. A replaced child still names this node as its parent.
    void add(const Ptr& child);

    /// Erases the child under the component of `child`, which need not be `child` itself; then
    /// `child` has no parent, even if it was not attached here.
    void remove(const Ptr& child) noexcept;

    /// Whether there is a child under that component.
    [[nodiscard]] bool contains(const PathComponent& component) const noexcept
    {
        return child(component) != nullptr;
    }

    /// The child under that component; null if there is none.
    [[nodiscard]] Ptr operator[](const PathComponent& component) const noexcept
    {
        return _children.get(component);
    }

    /// The children's components, in the order in which the names were interned.
    [[nodiscard]] std::vector<PathComponent> childrenComponents() const;

    /// The number of children.
    [[nodiscard]] std::size_t size() const noexcept { return _children.size(); }

    /// The number of nodes of the subtree, this one included. Linear in that number.
    [[nodiscard]] std::size_t treeSize() const;

    /// Whether there are no children; data does not count.
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// Attaches the node under another component of the same parent, replacing any child already
    /// there. Without a parent, only the component changes.
    void rename(const PathComponent& component);

    /// Attaches the node under `component` of `newParent`, which must not lie in its subtree; null
    /// for no parent. If `newParent` is already its parent, does nothing, and the component stays.
    void move(const PathComponent& component, const Ptr& newParent);

    /// Gives the node a value.
    void setData(const T& data)
    {
        _data = data;
        _hasData = true;
    }

    /// The value last set, even after `clearData()`; a default-constructed one if none was set.
    [[nodiscard]] const T& data() const noexcept { return _data; }
    /// Whether a value was set and not cleared since.
    [[nodiscard]] bool hasData() const noexcept { return _hasData; }

    /// Makes `hasData()` false and changes nothing else.
    void clearData() noexcept { _hasData = false; }

    /// The depth of the lowest proper ancestor that all data at and below this node share, if the
    /// node's parent is at `depth`: see `Trie::closestCommonAncestor`.
    [[nodiscard]] int closestCommonAncestor(int depth) const noexcept;

    /// Removes the component, the parent, the children and the data. The former parent may still
    /// hold the node.
    void clear() noexcept;

private:
    friend class Trie<T>;
    friend class detail::ChildTable<TrieNode<T>>;

    /// The child under that component, without shared ownership; null if there is none.
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

/// Values by path, one tree level per component, so that queries about a path, its ancestors and
/// its descendants take one walk along the path. Segments do not count: paths of the same
/// components are the same to a trie.
///
///     Trie<int> trie;
///     trie.add(path, 7);
///     trie.containsAncestor(path + "child");      // true
///     trie.containsDescendant(path.popSegment()); // true
///     trie.find(path)->data();                    // 7
///
/// **Invariants.** Every node except the root has data or children; operations that take data or
/// children away prune the nodes that this leaves without either. Callers of `createNode` and
/// callers that change a node directly must keep the invariant: the queries about descendants count
/// every node as data.
///
/// **Lifetime.** A node lives for as long as the trie or a caller holds it; see `TrieNode`. A
/// moved-from trie is empty and usable.
///
/// **Cost.** Linear in the path's length unless stated otherwise, independent of the number of
/// values. If an allocation fails, or the copy constructor or assignment of `T` throws, the trie
/// stays as it was.
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

    /// The node of the path without components. Never null; only moving the trie changes it.
    [[nodiscard]] NodePtr root() const noexcept { return _root; }

    /// Stores `data` at `path`, replacing any data there, and returns the node. A path without
    /// components stores on the root.
    NodePtr add(const Path& path, const T& data);

    /// The path's node. If there is none, makes one without data, and the nodes on the way.
    NodePtr createNode(const Path& path) { return findOrCreate(path)->shared_from_this(); }

    /// Takes the data at `path` away and returns its node, whose data can still be read and which
    /// may have left the tree. If there is no data at `path`, returns null and changes nothing.
    NodePtr remove(const Path& path);

    /// The path's node if it has data; otherwise null.
    [[nodiscard]] NodePtr find(const Path& path) const
    {
        auto* const node = walk(path);
        return node && node->hasData() ? node->shared_from_this() : nullptr;
    }

    /// The path's node, with or without data; null if there is none.
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

    /// The data at and below `path`: the data of a node before those below it, siblings in the
    /// order in which their names were interned. All data for a path without components. Linear in
    /// the number of nodes below, except for the sorting of siblings.
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
    /// -1 for an empty trie, 0 if they share no first component, one less than its own size for a
    /// single path. Linear in the result.
    [[nodiscard]] int closestCommonAncestor() const noexcept
    {
        return _root->closestCommonAncestor(-1);
    }

    /// Moves the node at `oldPath`, with its subtree, to `newPath`, replaces any node there, makes
    /// the nodes on the way, prunes the nodes that it leaves empty, and returns the node. If both
    /// paths have the same parent, changes nothing, and the node keeps its component. If there is
    /// no node at `oldPath`, or `newPath` lies below it, returns null and changes nothing. Throws
    /// `InvalidOperationOnPath` if `newPath` has no components.
    NodePtr move(const Path& oldPath, const Path& newPath);

    /// Drops all nodes but the root. Linear in their number.
    void clear() noexcept { _root->clear(); }

    /// The number of nodes, the root included: 1 for an empty trie. Linear in that number.
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

/// `add` for a node that a shared pointer is known to own.
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

/// The path's node, without shared ownership; null if there is none.
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

/// The path's node, made if there is none. New nodes are attached to one another before they are
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

/// Takes the node and then its ancestors out of the tree while they have neither data nor children
/// and are not the root. Ends at a node that a move has replaced by another one.
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
