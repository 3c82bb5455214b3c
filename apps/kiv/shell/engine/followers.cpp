#include "shell/engine/followers.h"

#include <optional>
#include <vector>

#include "kiv/hierarchy.h"
#include "kiv/notificationGuard.h"
#include "kiv/observableSelection.h"

namespace app::shell {

using namespace Kiv_v4;
using Op = SceneCompositeNotification::Op;

namespace {

bool hasMoved(const Op& change)
{
    return change.opType == SceneChanged::PathChanged && change.item &&
           (change.subOpType == ObjectPathChange::Renamed ||
            change.subOpType == ObjectPathChange::Reparented);
}

/// Whether items at or under the path of the change may be elsewhere or gone.
bool concerns(const Op& change)
{
    switch (change.opType) {
    case SceneChanged::Deleted:
        return change.subOpType != ObjectDelete::PreDelete;
    case SceneChanged::PathChanged:
        return hasMoved(change) || change.subOpType == ObjectPathChange::PathRemoved;
    case SceneChanged::SubtreeInvalidated:
        return true;
    case SceneChanged::Added:
    case SceneChanged::Composite:
        return false;
    }
    return false;
}

/// Where an item at or under the path of the change is looked for now.
Path movedPath(const Path& path, const Op& change)
{
    return hasMoved(change) ? path.reparent(change.path, change.item->path()) : path;
}

/// An item that is selected under a path that is no longer its own.
struct Stray
{
    SceneItem::Ptr selected;
    SceneItem::Ptr now; ///< Null when the item is gone and not kept.
};

/// The items of the selection at and under the path.
std::vector<SceneItem::Ptr> itemsUnder(const Selection& selection, const Path& path)
{
    std::vector<SceneItem::Ptr> items;
    std::vector<Selection::PathTrie::NodePtr> pending{selection.trie().node(path)};
    while (!pending.empty()) {
        const auto node = pending.back();
        pending.pop_back();
        const auto names = node->childrenComponents();
        for (auto name = names.rbegin(); name != names.rend(); ++name) {
            pending.push_back((*node)[*name]);
        }
        if (node->hasData()) {
            items.push_back(*node->data());
        }
    }
    return items;
}

std::vector<Stray> straysOf(const Selection& selection, const Op& change, Gone gone)
{
    std::vector<Stray> strays;
    for (const auto& item : itemsUnder(selection, change.path)) {
        const auto now = Hierarchy::createItem(movedPath(item->path(), change));
        if (now ? now->path() != item->path() : gone == Gone::dropped) {
            strays.push_back({item, now});
        }
    }
    return strays;
}

} // namespace

Path followed(const Path& path, const Op& change)
{
    if (!concerns(change) || !path.startsWith(change.path)) {
        return path;
    }
    auto now = movedPath(path, change);
    while (now.size() > 1 && !Hierarchy::createItem(now)) {
        now = now.pop();
    }
    return now;
}

void follow(Selection& selection, const Op& change, Gone gone)
{
    if (!concerns(change) || !selection.containsDescendantInclusive(change.path)) {
        return;
    }
    const auto strays = straysOf(selection, change, gone);
    auto* observable = dynamic_cast<ObservableSelection*>(&selection);
    std::optional<NotificationGuard> guard;
    if (observable && !strays.empty()) {
        guard.emplace(*observable);
    }
    for (const auto& [selected, now] : strays) {
        const auto next = selection.next(selected);
        selection.remove(selected);
        if (now) {
            selection.insert(next, now);
        }
    }
}

} // namespace app::shell
