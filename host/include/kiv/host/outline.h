#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/pathComponent.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

// Lists a scene across gateways, for printing, searching and exporting. A window that follows the
// scene should use `SceneTree`.

/// Returns the top items of all run-times, in the order of their registration. A run-time that
/// throws is written to the log and contributes none.
[[nodiscard]] KIV_EXPORT SceneItemList topItems();

/// Selects the items of an outline.
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

/// Called with one item and its depth below the root; the walk ends when it returns false.
using OutlineVisitor = std::function<bool(const SceneItem::Ptr& item, std::size_t depth)>;

/// Visits `root` and its descendants across gateways, parents before children, down to `depth`
/// levels. Neither the call stack nor the items kept alive grow with the depth of the scene.
KIV_EXPORT void walk(const SceneItem::Ptr& root, std::size_t depth, const OutlineVisitor& visit);

/// Called each time that long work looks at an item, to show how far it is or to end it: an
/// exception passes through to the caller. Cheap for the callee to do nothing in most calls.
using OnVisit = std::function<void()>;

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

/// Returns the rows of the tree under `root` in the order of the walk: the items that pass the
/// filter, and their ancestors.
[[nodiscard]] KIV_EXPORT std::vector<OutlineRow>
outline(const SceneItem::Ptr& root, const OutlineFilter& filter, const OnVisit& onVisit = {});

/// The numbers of items in rows, by kind, and the size of the tree.
struct OutlineCounts
{
    std::size_t items = 0;                        ///< The number of rows that match.
    std::map<std::string, std::size_t> nodeTypes; ///< Of these.
    std::map<Rtid, std::size_t> runTimes;         ///< Of these.
    std::size_t depth = 0;   ///< The number of levels below the root, over all rows.
    std::size_t breadth = 0; ///< The largest number of children of one row.
};

/// Returns the counts of the rows of one tree, in its order.
[[nodiscard]] KIV_EXPORT OutlineCounts countsOf(const std::vector<OutlineRow>& rows);

} // namespace Kiv_v4::host
