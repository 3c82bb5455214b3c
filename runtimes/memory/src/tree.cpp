#include "tree.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "kiv/memory/dataModel.h"

namespace Kiv_v4::memory {

namespace {

void link(Node& node, Node& parent, Node* before) noexcept
{
    node.parent = &parent;
    node.next = before;
    node.previous = before ? before->previous : parent.lastChild;
    (node.previous ? node.previous->next : parent.firstChild) = &node;
    (before ? before->previous : parent.lastChild) = &node;
}

void unlink(Node& node) noexcept
{
    (node.previous ? node.previous->next : node.parent->firstChild) = node.next;
    (node.next ? node.next->previous : node.parent->lastChild) = node.previous;
    node.parent = node.previous = node.next = nullptr;
}

} // namespace

Node* nextInSubtree(const Node* top, Node* node) noexcept
{
    if (node->firstChild) {
        return node->firstChild;
    }
    while (node != top && !node->next) {
        node = node->parent;
    }
    return node == top ? nullptr : node->next;
}

Detached::Detached(std::shared_ptr<Tree> tree, Node* top) noexcept
    : _tree(std::move(tree)), _top(top)
{}

Detached::Detached(Detached&& other) noexcept
    : _tree(std::move(other._tree)), _top(std::exchange(other._top, nullptr))
{}

Detached& Detached::operator=(Detached&& other) noexcept
{
    std::swap(_tree, other._tree);
    std::swap(_top, other._top);
    return *this;
}

Detached::~Detached()
{
    if (_top) {
        _tree->destroy(_top);
    }
}

Node* Detached::release() noexcept
{
    return std::exchange(_top, nullptr);
}

Tree::Tree(Rtid runTimeId, const PathComponent& rootName)
    : _rootPath(PathSegment(rootName, runTimeId, DataModel::kSeparator))
{
    _root.name = rootName;
    _root.type = "root";
}

Tree::~Tree()
{
    while (_root.firstChild) {
        auto& child = *_root.firstChild;
        leave(child);
        unlink(child);
        destroy(&child);
    }
}

Node* Tree::find(const Path& path) noexcept
{
    if (path.nbSegments() != 1 || path.empty() || path.runTimeId() != runTimeId() ||
        path.segment(0).separator() != DataModel::kSeparator || *path.begin() != _root.name) {
        return nullptr;
    }
    auto* node = &_root;
    for (auto name = path.begin() + 1; node && name != path.end(); ++name) {
        node = child(*node, *name);
    }
    return node;
}

Node* Tree::child(const Node& parent, const PathComponent& name) noexcept
{
    const auto found = _index.find({&parent, name});
    return found == _index.end() ? nullptr : found->second;
}

Path Tree::pathOf(const Node& node) const
{
    PathSegment::Components names;
    for (const auto* step = &node; step; step = step->parent) {
        names.push_back(step->name);
    }
    std::reverse(names.begin(), names.end());
    return PathSegment(std::move(names), runTimeId(), DataModel::kSeparator);
}

bool Tree::contains(const Node& node) const noexcept
{
    const auto* top = &node;
    while (top->parent) {
        top = top->parent;
    }
    return top == &_root;
}

Detached Tree::make(const std::string& type, const PathComponent& name)
{
    auto node = std::make_unique<Node>();
    node->name = name;
    node->type = type;
    return {shared_from_this(), node.release()};
}

Node& Tree::attach(Detached&& subtree, Node& parent, Node* before)
{
    auto& node = *subtree.get();
    enter(node, parent);
    subtree.release();
    link(node, parent, before);
    return node;
}

Detached Tree::detach(Node& node)
{
    auto tree = shared_from_this();
    leave(node);
    unlink(node);
    return {std::move(tree), &node};
}

void Tree::move(Node& node, Node& parent, Node* before, const PathComponent& name) noexcept
{
    auto entry = _index.extract({node.parent, node.name});
    unlink(node);
    node.name = name;
    link(node, parent, before);
    entry.key() = {&parent, name};
    _index.insert(std::move(entry));
}

void Tree::reorder(Node& parent, const std::vector<Node*>& children) noexcept
{
    parent.firstChild = parent.lastChild = nullptr;
    for (auto* child : children) {
        link(*child, parent, nullptr);
    }
}

Detached Tree::makeLike(const Node& node)
{
    auto made = make(node.type, node.name);
    made.get()->properties = node.properties;
    if (node.attributes) {
        made.get()->attributes = node.attributes->copyFor(*made.get());
    }
    return made;
}

Detached Tree::copy(const Node& top)
{
    auto copied = makeLike(top);
    auto* target = copied.get();
    for (const auto* source = &top; source;) {
        if (source->firstChild) {
            source = source->firstChild;
        } else {
            for (; source != &top && !source->next; source = source->parent) {
                target = target->parent;
            }
            if (source == &top) {
                break;
            }
            source = source->next;
            target = target->parent;
        }
        target = &attach(makeLike(*source), *target, nullptr);
    }
    return copied;
}

void Tree::destroy(Node* top) noexcept
{
    // Each node goes when its last child has gone, without recursion.
    for (auto* node = top; node;) {
        if (auto* child = node->firstChild) {
            node->firstChild = child->next;
            leave(*child);
            node = child;
        } else {
            auto* parent = node == top ? nullptr : node->parent;
            delete node;
            node = parent;
        }
    }
}

std::size_t Tree::ChildKeyHash::operator()(const ChildKey& key) const noexcept
{
    // Ids are consecutive and nodes are aligned: mix both into all bits.
    const auto parent = reinterpret_cast<std::uintptr_t>(key.parent);
    return (parent ^ (key.name.id() * 0x9E3779B97F4A7C15U)) * 0xC2B2AE3D27D4EB4FU >> 17;
}

void Tree::enter(Node& node, const Node& parent)
{
    _index.emplace(ChildKey{&parent, node.name}, &node);
}

void Tree::leave(const Node& node) noexcept
{
    _index.erase({node.parent, node.name});
}

} // namespace Kiv_v4::memory
