#include "strays.h"

#include <algorithm>
#include <utility>

namespace Kiv_v4::host::detail {

namespace {

/// Visits the nodes with data at and under the path.
template <class T, class Visit>
void eachUnder(const Trie<T>& trie, const Path& path, Visit visit)
{
    auto top = trie.root();
    for (const auto& component : path) {
        top = (*top)[component];
        if (!top) {
            return;
        }
    }
    for (std::vector<typename Trie<T>::NodePtr> open{top}; !open.empty();) {
        const auto node = std::move(open.back());
        open.pop_back();
        if (node->hasData()) {
            visit(*node);
        }
        for (const auto& component : node->childrenComponents()) {
            open.push_back((*node)[component]);
        }
    }
}

} // namespace

void Strays::follow(std::span<const Op> ops, bool isBatch)
{
    for (const auto& op : ops) {
        if (hasMoved(op)) {
            move(op.path, op.item->path());
        } else if (hasGone(op, isBatch)) {
            setGone(op.path, true);
        } else if (hasCome(op)) {
            setGone(op.path, false);
        } else if (op.opType == SceneChanged::SubtreeInvalidated) {
            take(op.path);
            setGone(op.path, false); // unless its run-time says so later
        }
    }
}

void Strays::take(const Path& path)
{
    if (!_selection.containsDescendantInclusive(path)) {
        return;
    }
    eachUnder(_selection.trie(), path, [&](const auto& node) {
        const auto& item = *node.data();
        if (isAtOrUnder(item->path(), path) && _taken.insert(item->path()).second) {
            put(_there, item->path(), _strays.size());
            _strays.push_back({item, item->path()});
        }
    });
}

void Strays::move(const Path& from, const Path& to)
{
    take(from);
    for (const auto index : takeFrom(_there, from)) {
        auto& path = _strays[index].path;
        path = path.reparent(from, to);
        put(_there, path, index);
    }
}

void Strays::setGone(const Path& path, bool gone)
{
    if (gone) {
        take(path);
    }
    auto& to = gone ? _gone : _there;
    for (const auto index : takeFrom(gone ? _there : _gone, path)) {
        _strays[index].gone = gone;
        put(to, _strays[index].path, index);
    }
}

std::vector<std::size_t> Strays::takeFrom(Places& places, const Path& path)
{
    std::vector<std::size_t> found;
    if (!places.containsDescendantInclusive(path)) {
        return found;
    }
    eachUnder(places, path, [&](const auto& node) {
        std::copy_if(node.data().begin(), node.data().end(), std::back_inserter(found),
                     [&](auto index) { return isAtOrUnder(_strays[index].path, path); });
    });
    for (const auto index : found) {
        const auto& place = _strays[index].path;
        if (const auto node = places.find(place)) {
            auto left = node->data();
            std::erase(left, index);
            left.empty() ? static_cast<void>(places.remove(place)) : node->setData(left);
        }
    }
    return found;
}

void Strays::put(Places& places, const Path& path, std::size_t stray)
{
    const auto node = places.find(path);
    auto strays = node ? node->data() : std::vector<std::size_t>();
    strays.push_back(stray);
    places.add(path, strays);
}

} // namespace Kiv_v4::host::detail
