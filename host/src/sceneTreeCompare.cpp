#include <algorithm>
#include <utility>

#include "sceneTreeState.h"

namespace Kiv_v4::host {

namespace {

using Node = SceneTree::Node;

/// The largest set of nodes that need not move: a longest ascending sequence of the places that the
/// nodes, in the order of their rows, are wanted at.
std::unordered_set<const Node*> stayingOf(const std::vector<std::pair<Node*, std::size_t>>& places)
{
    std::vector<std::size_t> ends; // the last member of the best sequence of each length
    std::vector<std::size_t> before(places.size(), SIZE_MAX);
    for (std::size_t index = 0; index < places.size(); ++index) {
        const auto end =
            std::lower_bound(ends.begin(), ends.end(), places[index].second,
                             [&](auto at, auto place) { return places[at].second < place; });
        if (end != ends.begin()) {
            before[index] = *std::prev(end);
        }
        if (end == ends.end()) {
            ends.push_back(index);
        } else {
            *end = index;
        }
    }
    std::unordered_set<const Node*> staying;
    for (auto at = ends.empty() ? SIZE_MAX : ends.back(); at != SIZE_MAX; at = before[at]) {
        staying.insert(places[at].first);
    }
    return staying;
}

} // namespace

void SceneTree::State::compareAtEnd()
{
    while (!invalid.empty() || !unsure.empty()) {
        if (!invalid.empty()) {
            auto* top = *invalid.begin();
            invalid.erase(invalid.begin());
            invalidate(*top);
        } else {
            auto* parent = *unsure.begin();
            unsure.erase(unsure.begin());
            reconcile(*parent);
        }
    }
    fresh.clear();
    isBatch = false;
}

/// Compares all known nodes of a subtree, parents first.
void SceneTree::State::invalidate(Node& top)
{
    std::vector<Path> open; // the comparison may remove nodes
    const auto visit = [&](Node& node) {
        node._item.reset();
        reconcile(node);
        if (&node != &root) {
            tellChanged(node);
        }
        for (auto row = node.nbRows(); row > 0; --row) {
            open.push_back(node.child(row - 1)._path);
        }
    };
    visit(top);
    while (!open.empty()) {
        auto* node = find(open.back());
        open.pop_back();
        if (node) {
            visit(*node);
        }
    }
}

/// Makes the node's rows those of its item's children, with the fewest moves.
void SceneTree::State::reconcile(Node& parent)
{
    if (!parent._isOpened) {
        return;
    }
    const auto wantedCount =
        parent._isComplete ? kFetchAll : std::max<std::size_t>(1, parent.nbRows());
    const auto items = childrenOf(parent, 0, wantedCount, parent._isComplete);

    std::unordered_map<const Node*, std::size_t> places;
    std::unordered_set<const Node*> wanted;
    for (std::size_t place = 0; place < items.size(); ++place) {
        if (const auto* node = find(items[place]->path()); node && node->_parent == &parent) {
            wanted.insert(node);
            places.emplace(node, place);
        }
    }
    removeOthers(parent, wanted);

    std::vector<std::pair<Node*, std::size_t>> here;
    for (std::size_t row = 0; row < parent.nbRows(); ++row) {
        auto& node = parent.child(row);
        here.emplace_back(&node, places.at(&node));
    }
    const auto staying = stayingOf(here);

    std::size_t next = 0; // the row after the child before
    std::vector<Node*> added;
    const auto insertAdded = [&] {
        insert(parent, next, added);
        next += added.size();
        added.clear();
    };
    for (const auto& item : items) {
        if (auto* child = make(item->path(), item)) {
            added.push_back(child);
            continue;
        }
        auto* node = find(item->path());
        if (node->_parent != &parent) {
            continue; // listed twice
        }
        insertAdded();
        if (staying.count(node) != 0) {
            next = node->row() + 1;
            continue;
        }
        const auto row = next - (node->row() < next ? 1 : 0);
        if (node->row() != row) {
            move(*node, parent, row);
        }
        next = row + 1;
    }
    insertAdded();
}

/// Removes the rows of all other nodes, neighbours together.
void SceneTree::State::removeOthers(Node& parent, const std::unordered_set<const Node*>& wanted)
{
    for (auto row = parent.nbRows(); row > 0;) {
        auto first = row;
        while (first > 0 && wanted.count(&parent.child(first - 1)) == 0) {
            --first;
        }
        if (first < row) {
            remove(parent, first, row - first);
        }
        row = first > 0 ? first - 1 : 0;
    }
}

} // namespace Kiv_v4::host
