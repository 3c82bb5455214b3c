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

#include "attributeTable.h"
#include "properties.h"

namespace Kiv_v4::memory {

/// One item of the scene. Siblings form a doubly linked list, so that inserting and removing cost
/// the same wherever they happen.
struct Node
{
    PathComponent name;
    std::string type;
    Rtid gateway = 0; ///< The run-time whose items begin under this one; 0 for none.
    Properties properties;
    std::unique_ptr<AttributeTable> attributes; ///< Null until there was one.

    Node* parent = nullptr;
    Node* previous = nullptr;
    Node* next = nullptr;
    Node* firstChild = nullptr;
    Node* lastChild = nullptr;
};

/// The next node of the subtree under `top`, parents before children, or null behind the last.
[[nodiscard]] Node* nextInSubtree(const Node* top, Node* node) noexcept;

class Tree;

/// A node with all that is under it, outside the scene. Destroyed as a whole unless it goes back.
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

    /// The node at `path`, or null.
    [[nodiscard]] Node* find(const Path& path) noexcept;
    [[nodiscard]] Node* child(const Node& parent, const PathComponent& name) noexcept;
    [[nodiscard]] Path pathOf(const Node& node) const;

    /// Whether the node is in the scene: false for one of a detached subtree.
    [[nodiscard]] bool contains(const Node& node) const noexcept;

    /// A new node that is in no scene yet.
    [[nodiscard]] Detached make(const std::string& type, const PathComponent& name);

    /// Puts the subtree before `before`, a child of `parent`, or last when `before` is null.
    Node& attach(Detached&& subtree, Node& parent, Node* before);
    [[nodiscard]] Detached detach(Node& node);

    /// Gives the node another place and name; never fails.
    void move(Node& node, Node& parent, Node* before, const PathComponent& name) noexcept;

    /// Gives the children, all of them in `children`, that order.
    void reorder(Node& parent, const std::vector<Node*>& children) noexcept;

    /// A copy of the subtree, with its attributes, that is in no scene yet. Gateways become
    /// ordinary items: what is mounted under them is not theirs to copy. Connections stay where
    /// they are.
    [[nodiscard]] Detached copy(const Node& top);

    /// Destroys a detached subtree.
    void destroy(Node* top) noexcept;

    /// The number of a new connection, higher than all before.
    [[nodiscard]] std::uint64_t nextConnectionNumber() noexcept { return ++_nbConnectionsMade; }

private:
    struct ChildKey
    {
        const Node* parent;
        PathComponent name;
        bool operator==(const ChildKey&) const = default;
    };
    struct ChildKeyHash
    {
        std::size_t operator()(const ChildKey& key) const noexcept;
    };

    /// A new node with the type, name and attributes of that one.
    [[nodiscard]] Detached makeLike(const Node& node);

    void enter(Node& node, const Node& parent);
    void leave(const Node& node) noexcept;

    Node _root;
    Path _rootPath;
    std::unordered_map<ChildKey, Node*, ChildKeyHash> _index;
    std::uint64_t _nbConnectionsMade = 0;
};

} // namespace Kiv_v4::memory
