#pragma once

#include <vector>

#include "kiv/hierarchy.h"

namespace Kiv_v4::kit {

/// Calls `visit` with the item at `path` and its descendants in the same run-time, in the order of
/// the hierarchy. Leaves out the descendants of an item for which it returns false.
template <class Visit>
void walkItems(const Path& path, Visit visit)
{
    std::vector<SceneItem::Ptr> pending{Hierarchy::createItem(path)};
    while (!pending.empty()) {
        const auto item = std::move(pending.back());
        pending.pop_back();
        if (!item || item->runTimeId() != path.runTimeId() || !visit(item)) {
            continue;
        }
        if (const auto hierarchy = Hierarchy::hierarchy(item)) {
            const auto children = hierarchy->children();
            pending.insert(pending.end(), children.rbegin(), children.rend());
        }
    }
}

} // namespace Kiv_v4::kit
