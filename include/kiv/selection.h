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

/// An ordered set of scene items in which no path occurs twice. It answers at once whether a path,
/// an ancestor of it or a descendant of it is selected.
///
///     Selection selection;
///     selection.append(item);                             // true; false when selected already
///     selection.contains(item->path());                   // true
///     selection.containsDescendant(item->path().pop());   // true
///     for (const auto& selected : selection) { ... }      // in order
///
/// Two items of the same path are the same member, as are two paths of the same components in
/// different segments. A duplicate to add and an item to remove that is not selected are no errors:
/// the operation gives false and nothing changes.
///
/// Each change is made of a step without consequences (`do...`) and a hook (`post...`) for derived
/// classes, which runs after a change. Callers that must not announce anything use the steps.
///
/// **Lifetime.** A selection holds its items. Iterators are good until their item is removed.
///
/// **Reentrancy.** Hooks run when the change is complete and may read and change the selection. So
/// may destructors of items that a change drops.
///
/// **Cost.** Constant per item, whatever the size of the selection, unless said otherwise. The
/// first question about ancestors, descendants or the trie itself builds the trie, once, linear in
/// the number of items; from then on it is kept in step.
///
/// **Errors.** `std::invalid_argument` where said. When an allocation fails, `append`, `insert`,
/// `remove` and their steps leave the selection as it was.
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

    /// Takes the items, then runs the hook `postClear` of `other`, which is empty and usable.
    Selection(Selection&& other);

    virtual ~Selection();

    /// As `replaceWith`, also for a selection assigned to itself.
    Selection& operator=(const Selection& other);

    /// Takes the items, then runs the hook `postClear` of `other`, which is empty and usable, then
    /// `postReplaceWith` here. A selection assigned to itself is left empty.
    Selection& operator=(Selection&& other);

    /// The number of items.
    [[nodiscard]] std::size_t size() const noexcept { return _items.size(); }
    /// Whether nothing is selected.
    [[nodiscard]] bool empty() const noexcept { return _items.empty(); }

    /// Whether an item of that path is selected.
    [[nodiscard]] bool contains(const Path& path) const noexcept;

    /// The prefix questions of `Trie`, asked of the selected paths.
    [[nodiscard]] bool containsAncestor(const Path& path) const;
    [[nodiscard]] bool containsAncestorInclusive(const Path& path) const;
    [[nodiscard]] bool containsDescendant(const Path& path) const;
    [[nodiscard]] bool containsDescendantInclusive(const Path& path) const;

    /// The selected items at and below `path`, without a walk of the others: an item before those
    /// below it, siblings in the order in which their names were interned. All of them for a path
    /// without components. Segments do not count, as in the other prefix questions; see
    /// `Path::isAtOrBelow`. Linear in the path's length and in what is found, but for the sorting
    /// of siblings.
    ///
    /// Undefined when a caller has put positions of its own into the trie.
    [[nodiscard]] std::vector<SceneItem::Ptr> itemsUnder(const Path& path) const;

    /// The item of the longest path that is a proper ancestor of all selected paths, made by its
    /// run-time: for one item, its parent. Null when the items share no first component, and when
    /// the run-time makes none. Throws when the selection is empty, and as `Hierarchy::createItem`
    /// does.
    [[nodiscard]] SceneItem::Ptr closestCommonAncestor() const;

    /// The first and the last item; undefined for an empty selection.
    [[nodiscard]] const SceneItem::Ptr& front() const noexcept { return _items.front(); }
    [[nodiscard]] const SceneItem::Ptr& back() const noexcept { return _items.back(); }

    /// The item that follows the one of `item`'s path, null after the last. Throws for a null item
    /// and for one that is not selected.
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

    /// The selected paths with their positions, good for as long as the selection. Only prefix
    /// questions are answered from it: what a caller changes in it changes their answers and
    /// neither the items nor `contains`, and the next `clear` or replacement undoes it.
    [[nodiscard]] const PathTrie& trie() const;
    [[nodiscard]] PathTrie& trie();

    /// Adds the item at the end, unless its path is selected; then runs `postAppend`. Throws for a
    /// null item.
    bool append(const SceneItem::Ptr& item);

    /// Removes the item of the same path; then runs `postRemove` with the item given. Throws for a
    /// null item.
    bool remove(const SceneItem::Ptr& item);

    /// Adds the item before the one of `position`'s path, unless its own path is selected; then
    /// runs `postInsert`. A null `position` makes it `append`. Throws for a null item, and for a
    /// position that is not selected (which a duplicate is never asked for).
    bool insert(const SceneItem::Ptr& position, const SceneItem::Ptr& item);

    /// Removes all items; then runs `postClear`, also when there were none. Linear.
    void clear();

    /// Becomes a copy of `other`; then runs `postReplaceWith`. A selection replaced with itself is
    /// left empty, since it is emptied first. Linear.
    void replaceWith(const Selection& other);

    /// The change without the hook. Items are not null.
    bool doAppend(const SceneItem::Ptr& item);
    bool doRemove(const SceneItem::Ptr& item);
    bool doInsert(const SceneItem::Ptr& position, const SceneItem::Ptr& item);
    void doClear() noexcept;
    void doReplaceWith(const Selection& other);

protected:
    /// What happened, for derived classes; nothing is done here. References are good for the call.
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
