#include "memoryTree.h"

#include <algorithm>
#include <iterator>
#include <typeinfo>
#include <utility>

#include "kiv/memory/dataModel.h"

#include "memoryItem.h"
#include "nodeTypes.h"

namespace Kiv_v4::memory {

namespace {

/// Looking up paths of at most that many components is faster than remembering them.
constexpr std::size_t kFewSteps = 8;

/// Among at most that many siblings, counting is as fast as an index.
constexpr std::size_t kFewSiblings = 64;

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

bool isUnder(const Node& top, const Node& node) noexcept
{
    const auto* step = &node;
    while (step && step != &top) {
        step = step->parent;
    }
    return step != nullptr;
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

NodeWatch::NodeWatch(std::shared_ptr<Tree> tree, Node& node) noexcept
    : _tree(std::move(tree)), _node(&node), _outer(std::exchange(_tree->_watches, this))
{}

NodeWatch::~NodeWatch()
{
    _tree->_watches = _outer;
}

Node* NodeWatch::get() const noexcept
{
    return _node && _tree->contains(*_node) ? _node : nullptr;
}

Tree::Tree(Rtid runTimeId, const PathComponent& rootName)
    : _rootPath(PathSegment(rootName, runTimeId, DataModel::kSeparator))
{
    _root.name = rootName;
    _root.type = "root";
    changeVersion();
}

Tree::~Tree()
{
    while (_root.firstChild) {
        auto& child = *_root.firstChild;
        _index.erase(child);
        unlink(child);
        destroy(&child);
    }
}

void Tree::close() noexcept
{
    _closed = true;
    changeVersion();
}

Node* Tree::find(const Path& path) noexcept
{
    if (_lastNode && _lastPath == path) {
        return _lastNode;
    }
    if (_closed || path.nbSegments() != 1 || path.empty() || path.runTimeId() != runTimeId() ||
        path.segment(0).separator() != DataModel::kSeparator || *path.begin() != _root.name) {
        return nullptr;
    }
    auto* node = &_root;
    for (auto name = path.begin() + 1; node && name != path.end(); ++name) {
        node = child(*node, *name);
    }
    if (node && path.size() > kFewSteps) {
        remember(path, *node);
    }
    return node;
}

Node* Tree::find(const SceneItem& item) noexcept
{
    if (typeid(item) != typeid(Item)) {
        return find(item.path());
    }
    const auto& own = static_cast<const Item&>(item);
    if (auto* node = own.knownNode(_version)) {
        return node;
    }
    auto* node = find(item.path());
    if (node) {
        own.learnNode(*node, _version);
    }
    return node;
}

void Tree::remember(const Path& path, Node& node) noexcept
{
    _lastPath = path;
    _lastNode = &node;
}

Path Tree::pathOf(const Node& node) const
{
    if (&node == _lastNode) {
        return _lastPath;
    }
    PathSegment::Components names;
    for (const auto* step = &node; step; step = step->parent) {
        names.push_back(step->name);
    }
    std::reverse(names.begin(), names.end());
    return PathSegment(std::move(names), runTimeId(), DataModel::kSeparator);
}

bool Tree::contains(const Node& node) const noexcept
{
    return &node == _lastNode || isUnder(_root, node);
}

std::size_t Tree::nbChildren(const Node& parent)
{
    std::size_t count = 0;
    for (const auto* child = parent.firstChild; child; child = child->next) {
        if (++count > kFewSiblings) {
            return rows(parent).size();
        }
    }
    return count;
}

Node* Tree::childAt(const Node& parent, std::size_t row)
{
    if (row < kFewSiblings) {
        auto* child = parent.firstChild;
        for (; child && row > 0; --row) {
            child = child->next;
        }
        return child;
    }
    auto& known = rows(parent);
    return row < known.size() ? known.at(row) : nullptr;
}

std::size_t Tree::rowOf(const Node& node)
{
    std::size_t row = 0;
    for (const auto* before = node.previous; before; before = before->previous) {
        if (++row > kFewSiblings) {
            return rows(*node.parent).rowOf(node);
        }
    }
    return row;
}

SiblingRows& Tree::rows(const Node& parent)
{
    return _rows.try_emplace(&parent, parent).first->second;
}

PathComponent Tree::freeName(const Node& parent, const std::string& name,
                             const std::vector<PathComponent>& freed)
{
    return _freeNames.find(*this, parent, name, freed);
}

void Tree::setGateway(Node& node, Rtid nestedRunTimeId)
{
    if (nestedRunTimeId != 0) {
        _gateways.insert(node);
    } else {
        _gateways.erase(node);
    }
    node.gateway = nestedRunTimeId;
}

Detached Tree::make(const std::string& type, const PathComponent& name)
{
    auto node = std::make_unique<Node>();
    node->name = name;
    node->type = type;
    Detached made(shared_from_this(), node.release());
    if (type == kCamera) {
        _cameras.insert(*made.get());
    }
    return made;
}

Node& Tree::attach(Detached&& subtree, Node& parent, Node* before)
{
    _index.reserve(1);
    auto& node = *subtree.release();
    _index.insert(node, parent);
    link(node, parent, before);
    return node;
}

Detached Tree::detach(Node& node)
{
    auto tree = shared_from_this();
    changeVersion();
    _index.erase(node);
    unlink(node);
    return {std::move(tree), &node};
}

void Tree::move(Node& node, Node& parent, Node* before, const PathComponent& name) noexcept
{
    changeVersion();
    _index.erase(node);
    unlink(node);
    node.name = name;
    _index.insert(node, parent);
    link(node, parent, before);
}

void Tree::reorder(Node& parent, const std::vector<Node*>& children) noexcept
{
    changeVersion();
    _rows.erase(&parent);
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
    // Destroys each node after its last child, without recursion.
    for (auto* node = top; node;) {
        if (auto* child = node->firstChild) {
            node->firstChild = child->next;
            _index.erase(*child);
            node = child;
        } else {
            auto* parent = node == top ? nullptr : node->parent;
            destroyOne(node);
            node = parent;
        }
    }
}

void Tree::destroyOne(Node* node) noexcept
{
    if (node->gateway != 0) {
        _gateways.erase(*node);
    }
    if (node->type == kCamera) {
        _cameras.erase(*node);
    }
    if (!_rows.empty()) {
        _rows.erase(node);
    }
    _freeNames.forget(*node);
    for (auto* watch = _watches; watch; watch = watch->_outer) {
        if (watch->_node == node) {
            watch->_node = nullptr;
        }
    }
    delete node;
}

void Tree::link(Node& node, Node& parent, Node* before) noexcept
{
    const auto known = _rows.find(&parent);
    if (known != _rows.end()) {
        try {
            known->second.insert(node, before);
        } catch (...) {
            _rows.erase(known); // no memory: the next query makes it again
        }
    }
    node.parent = &parent;
    node.next = before;
    node.previous = before ? before->previous : parent.lastChild;
    (node.previous ? node.previous->next : parent.firstChild) = &node;
    (before ? before->previous : parent.lastChild) = &node;
}

void Tree::unlink(Node& node) noexcept
{
    const auto known = _rows.find(node.parent);
    if (known != _rows.end()) {
        known->second.erase(node);
    }
    _freeNames.left(*node.parent, node.name);
    (node.previous ? node.previous->next : node.parent->firstChild) = node.next;
    (node.next ? node.next->previous : node.parent->lastChild) = node.previous;
    node.parent = node.previous = node.next = nullptr;
}

void Tree::changeVersion() noexcept
{
    static std::uint64_t last = 0;
    _version = ++last;
    _lastNode = nullptr;
    _lastPath = Path();
}

} // namespace Kiv_v4::memory
