#include "selectionFollower.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "kiv/hierarchy.h"
#include "kiv/notificationGuard.h"
#include "kiv/observableSelection.h"
#include "kiv/runTimeMgr.h"
#include "kiv/trie.h"

#include "scopedFlag.h"
#include "strays.h"

namespace Kiv_v4::host::detail {

namespace {

SceneItem::Ptr itemAt(const Path& path)
{
    return RunTimeMgr::instance().hierarchyHandler(path.runTimeId()) ? Hierarchy::createItem(path)
                                                                     : nullptr;
}

/// A selected item and the item to select in its place; null for none.
using Replacements = std::unordered_map<Path, std::pair<SceneItem::Ptr, SceneItem::Ptr>>;

/// Items that follow one another in the selection, and the one after the last; null at the end.
struct Run
{
    std::vector<SceneItem::Ptr> items;
    SceneItem::Ptr next;
};

/// The items to be replaced, in the order of the selection. Linear in their number.
std::vector<Run> runsOf(const Selection& selection, const Replacements& replacements)
{
    std::unordered_map<Path, SceneItem::Ptr> nextOf;
    std::unordered_set<Path> followers;
    for (const auto& [path, replacement] : replacements) {
        const auto next = selection.next(replacement.first);
        nextOf.emplace(path, next);
        if (next && replacements.count(next->path()) != 0) {
            followers.insert(next->path());
        }
    }
    std::vector<Run> runs;
    for (const auto& [path, replacement] : replacements) {
        if (followers.count(path) != 0) {
            continue;
        }
        auto& run = runs.emplace_back();
        run.next = replacement.first;
        while (run.next && nextOf.count(run.next->path()) != 0) {
            run.items.push_back(run.next);
            run.next = nextOf[run.next->path()];
        }
    }
    return runs;
}

/// Combines the changes while it lives into one composite, if the selection is observable.
std::optional<NotificationGuard> guardOf(Selection& selection)
{
    auto* observable = dynamic_cast<ObservableSelection*>(&selection);
    return observable ? std::optional<NotificationGuard>(std::in_place, *observable) : std::nullopt;
}

} // namespace

/// An item that was dropped, to be selected again before the one at `next` when it comes back.
struct SelectionFollower::Lost
{
    Path path;
    Path next;         ///< Empty at the end.
    std::size_t order; ///< Among the lost items.
};

/// The items that left the selection because they were deleted, until other code changes it.
struct SelectionFollower::Memory : Observer
{
    void operator()(const Notification& /*notification*/) override
    {
        if (!isOwnChange) {
            lost.clear();
        }
    }

    /// Those that the changes may have brought back, in the order in which they were lost.
    [[nodiscard]] std::vector<Lost> returning(std::span<const Op> ops) const
    {
        std::vector<Lost> found;
        for (const auto& op : ops) {
            if (hasCome(op) || op.opType == SceneChanged::SubtreeInvalidated) {
                const auto under = lost.dataUnder(op.path);
                std::copy_if(under.begin(), under.end(), std::back_inserter(found),
                             [&](const Lost& item) { return isAtOrUnder(item.path, op.path); });
            }
        }
        std::sort(found.begin(), found.end(),
                  [](const Lost& left, const Lost& right) { return left.order < right.order; });
        return found;
    }

    Trie<Lost> lost;
    std::size_t nbLost = 0; ///< Since the beginning.
    bool isOwnChange = false;
};

SelectionFollower::SelectionFollower(const Selection::Ptr& selection, HostScene::Gone gone)
    : _selection(selection), _gone(gone), _memory(std::make_shared<Memory>())
{
    if (const auto observable = std::dynamic_pointer_cast<ObservableSelection>(selection)) {
        observable->addObserver(_memory);
    }
}

SelectionFollower::~SelectionFollower() = default;

void SelectionFollower::follow(std::span<const Op> ops, bool isBatch)
{
    const auto selection = _selection.lock();
    if (!selection) {
        return;
    }
    const ScopedFlag ownChange(_memory->isOwnChange);
    bringBack(*selection, ops);

    Strays strays(*selection);
    strays.follow(ops, isBatch);
    Replacements replacements;
    for (const auto& stray : strays.all()) {
        const auto now = stray.gone ? nullptr : itemAt(stray.path);
        if (now ? now->path() != stray.selected->path() : _gone != HostScene::Gone::Kept) {
            replacements.emplace(stray.selected->path(), std::pair(stray.selected, now));
        }
    }
    if (replacements.empty()) {
        return;
    }
    const auto runs = runsOf(*selection, replacements);
    const auto guard = guardOf(*selection);
    for (const auto& [path, replacement] : replacements) {
        selection->remove(replacement.first);
    }
    const auto remembers = _gone == HostScene::Gone::ComesBack && guard;
    for (const auto& run : runs) {
        for (const auto& item : run.items) {
            if (const auto& now = replacements[item->path()].second) {
                selection->insert(run.next, now);
            } else if (remembers) {
                _memory->lost.add(item->path(), {item->path(), run.next ? run.next->path() : Path(),
                                                 _memory->nbLost++});
            }
        }
    }
}

void SelectionFollower::leave(Rtid runTimeId)
{
    const auto selection = _selection.lock();
    if (!selection) {
        return;
    }
    for (const auto& item : _memory->lost.dataUnder({})) {
        if (leadsThrough(item.path, runTimeId)) {
            _memory->lost.remove(item.path);
        }
    }
    std::vector<SceneItem::Ptr> leaving;
    std::copy_if(selection->begin(), selection->end(), std::back_inserter(leaving),
                 [&](const auto& item) { return leadsThrough(item->path(), runTimeId); });
    if (!leaving.empty()) {
        const auto guard = guardOf(*selection);
        for (const auto& item : leaving) {
            selection->remove(item);
        }
    }
}

void SelectionFollower::bringBack(Selection& selection, std::span<const Op> ops)
{
    std::vector<std::pair<SceneItem::Ptr, Path>> back;
    for (const auto& item : _memory->returning(ops)) {
        const auto now = itemAt(item.path);
        if (now && _memory->lost.remove(item.path)) {
            back.emplace_back(now, item.next);
        }
    }
    if (back.empty()) {
        return;
    }
    const auto guard = guardOf(selection);
    for (const auto& [item, next] : back) {
        const auto position = next.empty() || !selection.contains(next) ? nullptr : itemAt(next);
        selection.insert(position, item);
    }
}

} // namespace Kiv_v4::host::detail
