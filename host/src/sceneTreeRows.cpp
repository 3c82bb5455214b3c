#include <algorithm>
#include <utility>

#include "rows.h"
#include "sceneTreeState.h"

namespace Kiv_v4::host {

namespace {

using Node = SceneTree::Node;

/// The node and all under it, parents first.
template <class Visit>
void eachOf(Node& top, Visit visit)
{
    for (std::vector<Node*> open{&top}; !open.empty();) {
        auto& node = *open.back();
        open.pop_back();
        for (auto row = node.nbRows(); row > 0; --row) {
            open.push_back(&node.child(row - 1));
        }
        visit(node);
    }
}

/// While it lives, nothing is fetched: item models fetch from inside their own announcements.
class Telling
{
public:
    explicit Telling(bool& flag) : _flag(flag), _before(std::exchange(flag, true)) {}
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;
    ~Telling() { _flag = _before; }

private:
    bool& _flag;
    const bool _before;
};

} // namespace

SceneTree::Node* SceneTree::State::make(const Path& path, const SceneItem::Ptr& item)
{
    auto& place = byPath[path];
    return place ? nullptr : place = new Node(path, item);
}

void SceneTree::State::insert(Node& parent, std::size_t row, const std::vector<Node*>& nodes)
{
    if (nodes.empty()) {
        return;
    }
    const Telling telling(isTelling);
    for (auto* listener : listeners) {
        listener->beginInsert(parent, row, nodes.size());
    }
    for (auto* node : nodes) {
        Rows::insert(parent, row++, *node);
    }
    for (auto* listener : listeners) {
        listener->endInsert();
    }
}

void SceneTree::State::remove(Node& parent, std::size_t first, std::size_t count)
{
    const Telling telling(isTelling);
    for (auto* listener : listeners) {
        listener->beginRemove(parent, first, count);
    }
    std::vector<Node*> removed;
    for (; count > 0; --count) {
        removed.push_back(&parent.child(first));
        Rows::erase(*removed.back());
    }
    for (auto* listener : listeners) {
        listener->endRemove();
    }
    for (auto* node : removed) {
        forget(*node);
    }
}

void SceneTree::State::move(Node& node, Node& newParent, std::size_t row)
{
    const Telling telling(isTelling);
    for (auto* listener : listeners) {
        listener->beginMove(node, newParent, row);
    }
    Rows::erase(node);
    Rows::insert(newParent, row, node);
    for (auto* listener : listeners) {
        listener->endMove();
    }
}

void SceneTree::State::tellChanged(Node& node)
{
    const Telling telling(isTelling);
    for (auto* listener : listeners) {
        listener->changed(node);
    }
}

void SceneTree::State::setPath(Node& node, const Path& path)
{
    const auto before = node._path;
    eachOf(node, [&](Node& below) {
        byPath.erase(below._path);
        below._path = below._path.reparent(before, path);
        below._item.reset();
        byPath[below._path] = &below;
    });
}

/// Destroys a node that has left its parent, and its descendants.
void SceneTree::State::forget(Node& top)
{
    std::vector<Node*> all;
    eachOf(top, [&](Node& node) { all.push_back(&node); });
    for (auto* node : all) {
        byPath.erase(node->_path);
        unsure.erase(node);
        invalid.erase(node);
        fresh.erase(node);
        delete node;
    }
}

} // namespace Kiv_v4::host
