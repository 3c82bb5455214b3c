#include "kiv/selection.h"

#include <stdexcept>
#include <utility>

#include "kiv/hierarchy.h"

namespace Kiv_v4 {

namespace {

void require(bool condition, const char* message)
{
    if (!condition) {
        throw std::invalid_argument(message);
    }
}

} // namespace

Selection::Selection() = default;

Selection::Selection(const Selection& other)
{
    doReplaceWith(other);
    postReplaceWith();
}

Selection::Selection(Selection&& other)
    : _trie(std::move(other._trie)), _trieBuilt(other._trieBuilt), _items(std::move(other._items)),
      _table(std::move(other._table))
{
    other.postClear();
}

Selection::~Selection()
{
    doClear();
}

Selection& Selection::operator=(const Selection& other)
{
    replaceWith(other);
    return *this;
}

Selection& Selection::operator=(Selection&& other)
{
    if (this == &other) {
        doClear();
    } else {
        if (_trieBuilt) {
            other.builtTrie();
        }
        _trie = std::move(other._trie);
        _trieBuilt = other._trieBuilt;
        _table = std::move(other._table);
        const auto dropped = std::exchange(_items, std::move(other._items));
    }
    other.postClear();
    postReplaceWith();
    return *this;
}

bool Selection::contains(const Path& path) const noexcept
{
    return _table.find(path) != detail::PathTable::kNowhere;
}

bool Selection::containsAncestor(const Path& path) const
{
    return trie().containsAncestor(path);
}

bool Selection::containsAncestorInclusive(const Path& path) const
{
    return trie().containsAncestorInclusive(path);
}

bool Selection::containsDescendant(const Path& path) const
{
    return trie().containsDescendant(path);
}

bool Selection::containsDescendantInclusive(const Path& path) const
{
    return trie().containsDescendantInclusive(path);
}

std::vector<SceneItem::Ptr> Selection::itemsUnder(const Path& path) const
{
    std::vector<SceneItem::Ptr> items;
    for (const auto position : trie().dataUnder(path)) {
        items.push_back(*position);
    }
    return items;
}

SceneItem::Ptr Selection::closestCommonAncestor() const
{
    const auto depth = trie().closestCommonAncestor();
    require(depth >= 0, "No common ancestor in empty or invalid selection.");
    return depth == 0 ? nullptr : Hierarchy::createItem(front()->path().head(depth));
}

SceneItem::Ptr Selection::next(const SceneItem::Ptr& item) const
{
    require(item != nullptr, "Illegal null item pointer has no next item in selection.");
    const auto index = _table.find(item->path());
    require(index != detail::PathTable::kNowhere, "Item pointer not found in selection.");
    const auto following = std::next(_table.position(index));
    return following == _items.end() ? nullptr : *following;
}

const Selection::PathTrie& Selection::trie() const
{
    return builtTrie();
}

Selection::PathTrie& Selection::trie()
{
    return builtTrie();
}

bool Selection::append(const SceneItem::Ptr& item)
{
    require(item != nullptr, "Cannot append null item pointer to selection.");
    const auto changed = doAppend(item);
    if (changed) {
        postAppend(item);
    }
    return changed;
}

bool Selection::remove(const SceneItem::Ptr& item)
{
    require(item != nullptr, "Cannot remove null item pointer from selection.");
    // The reference may be to the selection's own pointer, which must live until the hook has run.
    const auto taken = take(item->path());
    if (taken.empty()) {
        return false;
    }
    postRemove(item);
    return true;
}

bool Selection::insert(const SceneItem::Ptr& position, const SceneItem::Ptr& item)
{
    require(item != nullptr, "Cannot insert null item pointer into selection.");
    if (!position) {
        return append(item);
    }
    const auto changed = doInsert(position, item);
    if (changed) {
        postInsert(position, item);
    }
    return changed;
}

void Selection::clear()
{
    doClear();
    postClear();
}

void Selection::replaceWith(const Selection& other)
{
    doReplaceWith(other);
    postReplaceWith();
}

bool Selection::doAppend(const SceneItem::Ptr& item)
{
    _table.reserve(_items.size() + 1);
    const auto index = _table.place(item->path());
    if (!_table.free(index)) {
        return false;
    }
    add(index, _items.end(), item);
    return true;
}

bool Selection::doRemove(const SceneItem::Ptr& item)
{
    return !take(item->path()).empty();
}

bool Selection::doInsert(const SceneItem::Ptr& position, const SceneItem::Ptr& item)
{
    _table.reserve(_items.size() + 1);
    const auto index = _table.place(item->path());
    if (!_table.free(index)) {
        return false;
    }
    const auto following = _table.find(position->path());
    require(following != detail::PathTable::kNowhere,
            "Position item pointer not found in selection.");
    add(index, _table.position(following), item);
    return true;
}

void Selection::doClear() noexcept
{
    const auto dropped = takeAll();
}

void Selection::doReplaceWith(const Selection& other)
{
    const auto dropped = takeAll();
    _table.reserve(other.size());
    for (const auto& item : other) {
        add(_table.place(item->path()), _items.end(), item);
    }
}

void Selection::postAppend(const SceneItem::Ptr& /*item*/) {}

void Selection::postRemove(const SceneItem::Ptr& /*item*/) {}

void Selection::postInsert(const SceneItem::Ptr& /*position*/, const SceneItem::Ptr& /*item*/) {}

void Selection::postClear() {}

void Selection::postReplaceWith() {}

/// Adds an item before `position`; `index` is the free place of its path. If an allocation fails,
/// nothing changes.
void Selection::add(detail::PathTable::Index index, const_iterator position,
                    const SceneItem::Ptr& item)
{
    const auto added = _items.insert(position, item);
    if (_trieBuilt) {
        try {
            _trie.add(item->path(), added);
        } catch (...) {
            _items.erase(added);
            throw;
        }
    }
    _table.fill(index, added);
}

/// Takes the item of that path out, if there is one.
Selection::Items Selection::take(const Path& path) noexcept
{
    Items taken;
    const auto index = _table.find(path);
    if (index != detail::PathTable::kNowhere) {
        const auto position = _table.position(index);
        if (_trieBuilt) {
            _trie.remove(path);
        }
        _table.erase(index);
        taken.splice(taken.begin(), _items, position);
    }
    return taken;
}

/// Takes all items out, so that none of them dies during the change.
Selection::Items Selection::takeAll() noexcept
{
    _table.clear();
    _trie.clear();
    return std::exchange(_items, Items());
}

Selection::PathTrie& Selection::builtTrie() const
{
    if (!_trieBuilt) {
        PathTrie built;
        for (auto position = begin(); position != end(); ++position) {
            built.add((*position)->path(), position);
        }
        _trie = std::move(built);
        _trieBuilt = true;
    }
    return _trie;
}

} // namespace Kiv_v4
