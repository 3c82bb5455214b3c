#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "kiv/detail/pathTable.h"
#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/trie.h"

namespace Kiv_v4 {

/// An ordered set of scene items in which no path occurs twice. It finds out fast whether a path,
/// an ancestor of it or a descendant of it is selected.
///
///     Selection selection;
///     selection.append(item);                             // true; false when selected already
///     selection.contains(item->path());                   // true
///     selection.containsDescendant(item->path().pop());   // true
///     for (const auto& selected : selection) { ... }      // in order
///
/// Two items of the same path are the same member, as are two paths of the same components in
/// different segments. Adding a selected item and removing one that is not selected are not errors:
/// the operation returns false and changes nothing.
///
/// Each operation consists of a step (`do...`), which makes the change and notifies nobody, and a
/// hook (`post...`) for derived classes, which runs after a change. Callers that must not notify
/// anybody use the steps.
///
/// **Lifetime.** A selection holds its items. Iterators are valid until their item is removed.
///
/// **Reentrancy.** Hooks run when the change is complete and may read and change the selection.
/// Destructors of items that a change drops may do so too.
///
/// **Cost.** Constant per item, whatever the size of the selection, unless stated otherwise. The
/// first query about ancestors, descendants or the trie itself builds the trie, once, linear in the
/// number of items; from then on every change updates it.
///
/// **Errors.** "Throws" below means `std::invalid_argument`. If an allocation fails, `append`,
/// `insert`, `remove` and their steps leave the selection as it was.
class KIV_EXPORT Selection
{
public:
    using Ptr = std::shared_ptr<Selection>;
    /// The items in their order.
    using Items = detail::SelectedItems;
    using const_iterator = Items::const_iterator;
    using iterator = const_iterator;
    using const_reverse_iterator = Items::const_reverse_iterator;
    using reverse_iterator = const_reverse_iterator;
    using value_type = SceneItem::Ptr;

    /// Values are positions in the selection's list.
    using PathTrie = Trie<const_iterator>;

    Selection();

    /// The same items in the same order.
    Selection(const Selection& other);

    /// Takes the items, then runs the hook `postClear` of `other`, which is then empty and usable.
    Selection(Selection&& other);

    virtual ~Selection();

    /// As `replaceWith`, also for a selection assigned to itself.
    Selection& operator=(const Selection& other);

    /// Takes the items, then runs the hook `postClear` of `other`, which is then empty and usable,
    /// then `postReplaceWith` here. A selection assigned to itself becomes empty.
    Selection& operator=(Selection&& other);

    /// The number of items.
    [[nodiscard]] std::size_t size() const noexcept { return _items.size(); }
    /// Whether nothing is selected.
    [[nodiscard]] bool empty() const noexcept { return _items.empty(); }

    /// Whether an item of that path is selected.
    [[nodiscard]] bool contains(const Path& path) const noexcept;

    /// The prefix queries of `Trie` on the selected paths.
    [[nodiscard]] bool containsAncestor(const Path& path) const;
    [[nodiscard]] bool containsAncestorInclusive(const Path& path) const;
    [[nodiscard]] bool containsDescendant(const Path& path) const;
    [[nodiscard]] bool containsDescendantInclusive(const Path& path) const;

    /// The selected items at and below `path`, found without a walk over the others: an item before
    /// those below it, siblings in the order in which their names were interned. All items for a
    /// path without components. Segments do not count, as in the other prefix queries; compare
    /// `Path::isAtOrBelow`. Linear in the path's length and in the number of items found, except
    /// for the sorting of siblings.
    ///
    /// Undefined if a caller has put positions of its own into the trie.
    [[nodiscard]] std::vector<SceneItem::Ptr> itemsUnder(const Path& path) const;

    /// The item of the longest path that is a proper ancestor of all selected paths, made by its
    /// run-time: for one item, its parent. Null if the items share no first component or the
    /// run-time makes no item. Throws if the selection is empty, and as `Hierarchy::createItem`
    /// does.
    [[nodiscard]] SceneItem::Ptr closestCommonAncestor() const;

    /// The first and the last item; undefined for an empty selection.
    [[nodiscard]] const SceneItem::Ptr& front() const noexcept { return _items.front(); }
    [[nodiscard]] const SceneItem::Ptr& back() const noexcept { return _items.back(); }

    /// The item after the one with the path of `item`; null after the last. Throws if `item` is
    /// null or not selected.
    [[nodiscard]] SceneItem::Ptr next(const SceneItem::Ptr& item) const;

    /// The items in order, and from the last to the first.
    [[nodiscard]] const_iterator begin() const noexcept { return _items.begin(); }
    [[nodiscard]] const_iterator end() const noexcept { return _items.end(); }
    [[nodiscard]] const_iterator cbegin() const noexcept { return _items.cbegin(); }
    [[nodiscard]] const_iterator cend() const noexcept { return _items.cend(); }
    [[nodiscard]] const_reverse_iterator rbegin() const noexcept { return _items.rbegin(); }
    [[nodiscard]] const_reverse_iterator rend() const noexcept { return _items.rend(); }
    [[nodiscard]] const_reverse_iterator crbegin() const noexcept { return _items.crbegin(); }
    [[nodiscard]] const_reverse_iterator crend() const noexcept { return _items.crend(); }

    /// The selected paths with their positions; the reference is valid for as long as the
    /// selection. Only prefix queries use the trie: changes that a caller makes in it change their
    /// results and neither the items nor `contains`, and the next `clear` or replacement undoes
    /// them.
    [[nodiscard]] const PathTrie& trie() const;
    [[nodiscard]] PathTrie& trie();

    /// Adds the item at the end, unless its path is selected; then runs `postAppend`. Throws if the
    /// item is null.
    bool append(const SceneItem::Ptr& item);

    /// Removes the item of the same path; then runs `postRemove` with the argument. Throws if the
    /// item is null.
    bool remove(const SceneItem::Ptr& item);

    /// Adds the item before the one with the path of `position`, unless its own path is selected;
    /// then runs `postInsert`. The same as `append` if `position` is null. Throws if the item is
    /// null, and if `position` is not selected (not checked if the item's path is selected).
    bool insert(const SceneItem::Ptr& position, const SceneItem::Ptr& item);

    /// Removes all items; then runs `postClear`, even if there were none. Linear.
    void clear();

    /// Becomes a copy of `other`; then runs `postReplaceWith`. A selection replaced with itself
    /// becomes empty, since it is cleared first. Linear.
    void replaceWith(const Selection& other);

    /// The changes without the hooks. `item` must not be null.
    bool doAppend(const SceneItem::Ptr& item);
    bool doRemove(const SceneItem::Ptr& item);
    bool doInsert(const SceneItem::Ptr& position, const SceneItem::Ptr& item);
    void doClear() noexcept;
    void doReplaceWith(const Selection& other);

protected:
    /// Hooks for derived classes; here they do nothing. References are valid during the call.
    virtual void postAppend(const SceneItem::Ptr& item);
    virtual void postRemove(const SceneItem::Ptr& item);
    virtual void postInsert(const SceneItem::Ptr& position, const SceneItem::Ptr& item);
    virtual void postClear();
    virtual void postReplaceWith();

private:
    KIV_HIDDEN void add(detail::PathTable::Index index, const_iterator position,
                        const SceneItem::Ptr& item);
    KIV_HIDDEN Items take(const Path& path) noexcept;
    KIV_HIDDEN Items takeAll() noexcept;
    KIV_HIDDEN PathTrie& builtTrie() const;

    // Built by the first prefix question. Then it stays, since callers may hold references to it.
    mutable PathTrie _trie;
    mutable bool _trieBuilt = false;

    Items _items;
    detail::PathTable _table; ///< The position of each item; what `contains` asks.
};

} // namespace Kiv_v4
