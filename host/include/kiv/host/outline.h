#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/pathComponent.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

// What a listing of a scene shows, across gateways: for printing, searching and exporting. A window
// that stays in step with the scene wants `SceneTree`.

/// Which items an outline shows.
struct OutlineFilter
{
    std::size_t depth = std::numeric_limits<std::size_t>::max(); ///< Levels below the root.
    std::string nodeType;                                        ///< Empty for all.

    /// Returns whether items of that type are shown.
    [[nodiscard]] bool matches(const std::string& type) const
    {
        return nodeType.empty() || type == nodeType;
    }
};

/// Told of one item and its depth below the root; the walk ends when it returns false.
using OutlineVisitor = std::function<bool(const SceneItem::Ptr& item, std::size_t depth)>;

/// Visits `root` and what its outliner lists below it, parents before children, down to `depth`
/// levels. Neither the call stack nor the items kept alive grow with the depth of the scene.
KIV_EXPORT void walk(const SceneItem::Ptr& root, std::size_t depth, const OutlineVisitor& visit);

/// One line of an outliner tree.
struct OutlineRow
{
    /// The last component of the item's path.
    PathComponent name;
    /// The item's `SceneItem::nodeType`.
    std::string nodeType;
    /// The item's run-time.
    Rtid runTimeId = 0;
    /// The number of levels below the root.
    std::size_t depth = 0;
    bool matches = true; ///< False for an ancestor shown only to place what is below it.
    bool isLast = true;  ///< Whether no sibling follows.
};

/// The rows of the tree under `root` in the order of the walk: the items that the filter lets
/// through, and their ancestors.
[[nodiscard]] KIV_EXPORT std::vector<OutlineRow> outline(const SceneItem::Ptr& root,
                                                         const OutlineFilter& filter);

} // namespace Kiv_v4::host
