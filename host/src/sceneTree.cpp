#include "kiv/host/sceneTree.h"

#include <algorithm>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"

#include "rows.h"
#include "sceneTreeState.h"

namespace Kiv_v4::host {

namespace {

/// Passes the scene's notifications to the tree.
class SceneFollower : public Observer
{
public:
    explicit SceneFollower(SceneTree::State& tree) : _tree(tree) {}

    void operator()(const Notification& notification) override
    {
        if (const auto* change = dynamic_cast<const SceneChanged*>(&notification)) {
            _tree.follow(detail::opsOf(*change), change->opType() == SceneChanged::Composite);
        }
    }

private:
    SceneTree::State& _tree;
};

} // namespace

SceneTree::State::State() : observer(std::make_shared<SceneFollower>(*this))
{
    if (Scene::hasInstance()) {
        Scene::instance().addObserver(observer);
    }
}

SceneTree::State::~State()
{
    for (const auto& entry : byPath) {
        delete entry.second;
    }
}

detail::ChildReader SceneTree::State::reader(const Node& node) const
{
    return &node == &root ? detail::ChildReader(filter) : detail::ChildReader(node.item(), filter);
}

SceneTree::Node* SceneTree::State::find(const Path& path) const
{
    const auto found = byPath.find(path);
    return found != byPath.end() ? found->second : nullptr;
}

SceneTree::Node* SceneTree::State::openParentOf(const Path& path)
{
    auto* parent = path.empty() ? nullptr : path.size() == 1 ? &root : find(path.pop());
    return parent && parent->_isOpened ? parent : nullptr;
}

SceneTree::State::Items SceneTree::State::childrenOf(const Node& node, std::size_t first,
                                                     std::size_t count, bool& isLast) const
{
    auto items = reader(node).children(first, count);
    isLast = items.size() < count;
    const auto depth = node._path.size() + 1;
    std::erase_if(items, [&](const auto& item) { return item->path().size() != depth; });
    return items;
}

bool SceneTree::State::canFetch(const Node& node) const
{
    return !isTelling && !node._isComplete && (node._isOpened || reader(node).hasAny());
}

void SceneTree::State::fetch(Node& node, std::size_t count)
{
    if (isTelling || node._isComplete) {
        return;
    }
    const auto wanted = reader(node).readsRanges() ? count : kFetchAll;
    const auto items = childrenOf(node, node.nbRows(), wanted, node._isComplete);
    node._isOpened = true;
    std::vector<Node*> nodes;
    for (const auto& item : items) {
        if (auto* child = make(item->path(), item)) {
            nodes.push_back(child);
        }
    }
    insert(node, node.nbRows(), nodes);
}

SceneTree::SceneTree() : _state(std::make_unique<State>()) {}

SceneTree::~SceneTree() = default;

SceneTree::Node& SceneTree::root() const noexcept
{
    return _state->root;
}

SceneTree::Node* SceneTree::find(const Path& path) const
{
    return _state->find(path);
}

SceneTree::Node* SceneTree::reveal(const Path& path)
{
    auto* node = &_state->root;
    for (std::size_t depth = 1; node && depth <= path.size(); ++depth) {
        const auto step = path.head(static_cast<int>(depth));
        if (!_state->find(step) && canFetch(*node)) {
            fetch(*node);
        }
        node = _state->find(step);
    }
    return path.empty() ? nullptr : node;
}

bool SceneTree::canFetch(const Node& node) const
{
    return _state->canFetch(node);
}

void SceneTree::fetch(Node& node, std::size_t count)
{
    if (count > 0) {
        _state->fetch(node, count);
    }
}

void SceneTree::setFilter(const ChildFilter& filter)
{
    _state->filter = filter;
    refresh();
}

const ChildFilter& SceneTree::filter() const noexcept
{
    return _state->filter;
}

void SceneTree::refresh()
{
    _state->invalid.insert(&_state->root);
    _state->compareAtEnd();
}

void SceneTree::addListener(Listener& listener)
{
    _state->listeners.push_back(&listener);
}

void SceneTree::removeListener(Listener& listener)
{
    std::erase(_state->listeners, &listener);
}

const SceneItem::Ptr& SceneTree::Node::item() const
{
    if (!_item && RunTimeMgr::instance().hierarchyHandler(_path.runTimeId())) {
        _item = Hierarchy::createItem(_path);
    }
    return _item;
}

std::string SceneTree::Node::name() const
{
    return _path.empty() ? std::string() : _path.back().string();
}

SceneTree::Listener::Listener() = default;

SceneTree::Listener::~Listener() = default;

} // namespace Kiv_v4::host
