#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "kiv/path.h"
#include "kiv/pathComponent.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

#include "childIndex.h"
#include "freeNames.h"
#include "markedNodes.h"
#include "memoryAttributeTable.h"
#include "properties.h"
#include "siblingRows.h"

namespace Kiv_v4::memory {

/// One item of the scene. Siblings form a doubly linked list, so that inserting and removing cost
/// the same wherever they happen.
struct Node
{
    PathComponent name;
    std::string type;
    Rtid gateway = 0;           ///< The run-time whose items begin under this one; 0 for none.
    std::uint32_t rowBlock = 0; ///< For `SiblingRows`.
    Properties properties;
    std::unique_ptr<AttributeTable> attributes; ///< Null until there was one.

    Node* parent = nullptr;
    Node* previous = nullptr;
    Node* next = nullptr;
    Node* firstChild = nullptr;
    Node* lastChild = nullptr;
};

/// The next node of the subtree under `top`, parents before children, or null after the last.
[[nodiscard]] Node* nextInSubtree(const Node* top, Node* node) noexcept;

/// Whether `node` is `top` or lies under it.
[[nodiscard]] bool isUnder(const Node& top, const Node& node) noexcept;

class Tree;

/// A node with its descendants, outside the scene. Destroyed as a whole unless it is put back.
class Detached
{
public:
    Detached() = default;
    Detached(std::shared_ptr<Tree> tree, Node* top) noexcept;
    Detached(Detached&& other) noexcept;
    Detached& operator=(Detached&& other) noexcept;
    ~Detached();

    [[nodiscard]] Node* get() const noexcept { return _top; }
    Node* release() noexcept;

private:
    std::shared_ptr<Tree> _tree;
    Node* _top = nullptr;
};

/// A node that may be renamed, moved, taken out or destroyed while it is watched.
class NodeWatch
{
public:
    NodeWatch(std::shared_ptr<Tree> tree, Node& node) noexcept;
    NodeWatch(const NodeWatch&) = delete;
    NodeWatch& operator=(const NodeWatch&) = delete;
    ~NodeWatch();

    /// The node while it is in the scene, else null.
    [[nodiscard]] Node* get() const noexcept;

private:
    friend class Tree;

    const std::shared_ptr<Tree> _tree;
    Node* _node;
    NodeWatch* const _outer; ///< The watch that was begun before.
};

/// The nodes of one scene, found by path.
///
/// Invariants: a node other than the root is entered in the index under its parent and its name,
/// also while it lies inside a detached subtree (whose top node is not entered); so detaching and
/// attaching cost the same however large the subtree is. No name occurs twice among siblings.
class Tree : public std::enable_shared_from_this<Tree>
{
public:
    Tree(Rtid runTimeId, const PathComponent& rootName);
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree();

    [[nodiscard]] Rtid runTimeId() const noexcept { return _rootPath.runTimeId(); }
    [[nodiscard]] Node& root() noexcept { return _root; }
    [[nodiscard]] const Path& rootPath() const noexcept { return _rootPath; }

    /// Makes all paths invalid, for after the run-time was unregistered.
    void close() noexcept;

    /// A number that is unique among all trees and changes with each change after which a path may
    /// name no node, or another one.
    [[nodiscard]] std::uint64_t version() const noexcept { return _version; }

    /// The node at `path`; null if there is none.
    [[nodiscard]] Node* find(const Path& path) noexcept;

    /// The same for an item's path. An own item remembers its node, so that further lookups are
    /// free while the version is the same.
    [[nodiscard]] Node* find(const SceneItem& item) noexcept;

    /// Remembers that `path` names the node, so that the next lookup of it is free at any depth.
    void remember(const Path& path, Node& node) noexcept;

    [[nodiscard]] Node* child(const Node& parent, const PathComponent& name) noexcept
    {
        return _index.find(parent, name);
    }
    [[nodiscard]] Path pathOf(const Node& node) const;

    /// Whether the node is in the scene, rather than in a detached subtree.
    [[nodiscard]] bool contains(const Node& node) const noexcept;

    /// The number of children, the child in a row or null, and the row of a node among its
    /// siblings. The first query costs a walk over the siblings if they are many, further ones
    /// little.
    [[nodiscard]] std::size_t nbChildren(const Node& parent);
    [[nodiscard]] Node* childAt(const Node& parent, std::size_t row);
    [[nodiscard]] std::size_t rowOf(const Node& node);

    /// `name`, made valid for an item and free among the children of `parent`. The names in `freed`
    /// count as free.
    [[nodiscard]] PathComponent freeName(const Node& parent, const std::string& name,
                                         const std::vector<PathComponent>& freed = {});

    void setGateway(Node& node, Rtid nestedRunTimeId);

    /// The gateways and the cameras at and below `top`, in the order of the hierarchy.
    [[nodiscard]] std::vector<Node*> gatewaysUnder(Node& top)
    {
        return _gateways.under(*this, top);
    }
    [[nodiscard]] std::vector<Node*> camerasUnder(Node& top) { return _cameras.under(*this, top); }

    /// A node that is in no scene yet.
    [[nodiscard]] Detached make(const std::string& type, const PathComponent& name);

    /// Puts the subtree before `before`, a child of `parent`, or last if `before` is null.
    Node& attach(Detached&& subtree, Node& parent, Node* before);
    [[nodiscard]] Detached detach(Node& node);

    /// Moves the node to another place and name; never fails.
    void move(Node& node, Node& parent, Node* before, const PathComponent& name) noexcept;

    /// Gives the children, all of them in `children`, that order.
    void reorder(Node& parent, const std::vector<Node*>& children) noexcept;

    /// A copy of the subtree, with its attributes, that is in no scene yet. Gateways become
    /// ordinary items, since the items mounted under them cannot be copied. Connections are not
    /// copied.
    [[nodiscard]] Detached copy(const Node& top);

    /// Destroys a detached subtree.
    void destroy(Node* top) noexcept;

    /// The number of a new connection, higher than all before.
    [[nodiscard]] std::uint64_t nextConnectionNumber() noexcept { return ++_nbConnectionsMade; }

private:
    friend class NodeWatch;

    /// A new node with the type, name and attributes of that one.
    [[nodiscard]] Detached makeLike(const Node& node);

    void link(Node& node, Node& parent, Node* before) noexcept;
    void unlink(Node& node) noexcept;
    void destroyOne(Node* node) noexcept;
    void changeVersion() noexcept;
    [[nodiscard]] SiblingRows& rows(const Node& parent);

    Node _root;
    const Path _rootPath;
    bool _closed = false;
    std::uint64_t _version = 0;
    ChildIndex _index;
    std::unordered_map<const Node*, SiblingRows> _rows; ///< For parents whose rows were queried.
    FreeNames _freeNames;
    MarkedNodes _gateways;
    MarkedNodes _cameras;
    NodeWatch* _watches = nullptr; ///< The latest one.
    Path _lastPath;                ///< The path of `_lastNode`, if that is not null.
    Node* _lastNode = nullptr;     ///< In the scene.
    std::uint64_t _nbConnectionsMade = 0;
};

} // namespace Kiv_v4::memory
