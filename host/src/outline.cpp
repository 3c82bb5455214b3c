#include "kiv/host/outline.h"

#include <algorithm>
#include <exception>
#include <string>

#include "kiv/hierarchy.h"
#include "kiv/hierarchyHandler.h"
#include "kiv/log.h"
#include "kiv/runTimeMgr.h"

namespace Kiv_v4::host {

namespace {

SceneItemList listedChildren(const SceneItem::Ptr& item)
{
    const auto hierarchy = Hierarchy::hierarchy(item);
    return hierarchy ? hierarchy->filteredChildren(hierarchy->defaultChildFilter())
                     : SceneItemList();
}

/// Drops the rows that neither match nor have a match below them. Seen from the end, the first row
/// one level above a row that stays is that row's parent.
void prune(std::vector<OutlineRow>& rows)
{
    auto kept = rows.rbegin();
    std::size_t parentDepth = 0;
    bool needsParent = false;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        if (!row->matches && !(needsParent && row->depth == parentDepth)) {
            continue;
        }
        needsParent = row->depth > 0;
        parentDepth = row->depth - 1;
        if (kept != row) {
            *kept = std::move(*row);
        }
        ++kept;
    }
    rows.erase(rows.begin(), kept.base());
}

/// Seen from the end, the first row of a depth since the last row above that depth has no sibling
/// after it.
void markLastSiblings(std::vector<OutlineRow>& rows)
{
    std::vector<bool> hasSibling;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        row->isLast = row->depth >= hasSibling.size() || !hasSibling[row->depth];
        hasSibling.resize(row->depth + 1);
        hasSibling[row->depth] = true;
    }
}

} // namespace

SceneItemList topItems()
{
    auto ids = RunTimeMgr::instance().getIds();
    ids.sort();
    SceneItemList items;
    for (const auto id : ids) {
        try {
            if (const auto handler = RunTimeMgr::instance().hierarchyHandler(id)) {
                items.splice(items.end(), handler->rootItems({}));
            }
        } catch (const std::exception& error) {
            log("topItems", "host/src/outline", __LINE__,
                RunTimeMgr::instance().getName(id) + " threw " + error.what() + "\n");
        }
    }
    items.remove(nullptr);
    return items;
}

void walk(const SceneItem::Ptr& root, std::size_t depth, const OutlineVisitor& visit)
{
    std::vector<SceneItemList> levels{{root}}; // the remaining items on each level
    while (!levels.empty()) {
        if (levels.back().empty()) {
            levels.pop_back();
            continue;
        }
        // An item is released before its children are visited: its path is as long as it is deep.
        const auto item = std::move(levels.back().front());
        levels.back().pop_front();
        if (!visit(item, levels.size() - 1)) {
            return;
        }
        if (levels.size() <= depth) {
            levels.push_back(listedChildren(item));
        }
    }
}

std::vector<OutlineRow> outline(const SceneItem::Ptr& root, const OutlineFilter& filter,
                                const OnVisit& onVisit)
{
    std::vector<OutlineRow> rows;
    walk(root, filter.depth, [&](const SceneItem::Ptr& item, std::size_t depth) {
        if (onVisit) {
            onVisit();
        }
        auto type = item->nodeType();
        const auto matches = filter.matches(type);
        rows.push_back({item->path().back(), std::move(type), item->runTimeId(), depth, matches});
        return true;
    });
    prune(rows);
    markLastSiblings(rows);
    return rows;
}

OutlineCounts countsOf(const std::vector<OutlineRow>& rows)
{
    OutlineCounts counts;
    std::vector<std::size_t> siblings; // so far, on each level down to the row's
    for (const auto& row : rows) {
        siblings.resize(row.depth + 1);
        counts.depth = std::max(counts.depth, row.depth);
        if (row.depth > 0) {
            counts.breadth = std::max(counts.breadth, ++siblings[row.depth]);
        }
        if (row.matches) {
            ++counts.items;
            ++counts.nodeTypes[row.nodeType];
            ++counts.runTimes[row.runTimeId];
        }
    }
    return counts;
}

} // namespace Kiv_v4::host
