#include "memoryWalk.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "kiv/hierarchyHandler.h"
#include "kiv/runTimeMgr.h"

#include "memoryItem.h"

namespace Kiv_v4::memory {

namespace {
/// The number of levels that keep their path: the paths of deeper chains would take much memory
/// together.
constexpr std::size_t kNbLevelsKept = 256;
} // namespace

SceneItemList itemsMountedAt(const Path& path, const Node& node)
{
    if (node.gateway == 0) {
        return {};
    }
    const auto nested = RunTimeMgr::instance().hierarchyHandler(node.gateway);
    return nested ? nested->rootItems(path) : SceneItemList();
}

MemoryWalk::MemoryWalk(std::shared_ptr<Tree> tree, const Path& path, Node* top)
    : _tree(std::move(tree)), _version(_tree->version()), _top(top), _node(top), _paths{path}
{}

bool MemoryWalk::next()
{
    if (!_node) {
        return false;
    }
    if (_tree->version() != _version) {
        throw std::logic_error("The scene was changed during a walk over it.");
    }
    if (!std::exchange(_begun, true)) {
        return true;
    }
    if (!_mounted.empty()) {
        _mounted.pop_front();
        _skips = true;
        return nextMounted() || goOn();
    }
    return goDown() || goOn();
}

std::size_t MemoryWalk::depth() const
{
    return _mounted.empty() ? _depth : _depth + 1;
}

Rtid MemoryWalk::runTimeId() const
{
    return _mounted.empty() ? _tree->runTimeId() : _mounted.front()->runTimeId();
}

const PathComponent& MemoryWalk::name() const
{
    return _mounted.empty() ? _node->name : _mountedName;
}

const std::string& MemoryWalk::nodeType() const
{
    return _mounted.empty() ? _node->type : _mountedType;
}

Path MemoryWalk::path() const
{
    return _mounted.empty() ? ownPath() : _mounted.front()->path();
}

SceneItem::Ptr MemoryWalk::item() const
{
    return _mounted.empty() ? makeItem(*_tree, ownPath(), *_node) : _mounted.front();
}

bool MemoryWalk::goDown() noexcept
{
    if (_skips || !_node->firstChild) {
        return false;
    }
    _node = _node->firstChild;
    ++_depth;
    return true;
}

/// Goes to the node after all children of the current one.
bool MemoryWalk::goOn()
{
    for (;; _node = _node->parent, --_depth) {
        // The descendants of the node were visited, even if this throws.
        if (!std::exchange(_skips, true) && _node->gateway != 0) {
            _mounted = itemsMountedAt(ownPath(), *_node);
            if (nextMounted()) {
                return true;
            }
        }
        _skips = false;
        if (_node == _top) {
            _node = nullptr;
            return false;
        }
        _paths.resize(std::min(_paths.size(), _depth));
        if (_node->next) {
            _node = _node->next;
            return true;
        }
    }
}

bool MemoryWalk::nextMounted()
{
    if (_mounted.empty()) {
        return false;
    }
    _mountedName = _mounted.front()->path().back();
    _mountedType = _mounted.front()->nodeType();
    return true;
}

Path MemoryWalk::ownPath() const
{
    if (_depth >= kNbLevelsKept) {
        return _tree->pathOf(*_node);
    }
    const Node* unnamed[kNbLevelsKept];
    std::size_t count = 0;
    for (const auto* node = _node; count + _paths.size() <= _depth; node = node->parent) {
        unnamed[count++] = node;
    }
    while (count > 0) {
        _paths.push_back(_paths.back() + unnamed[--count]->name);
    }
    return _paths.back();
}

} // namespace Kiv_v4::memory
