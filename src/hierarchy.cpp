#include "kiv/hierarchy.h"

#include "kiv/hierarchyHandler.h"

#include "dispatch.h"
#include "executed.h"

namespace Kiv_v4 {

namespace {
constexpr auto kFile = "src/hierarchy";

// Every run-time is expected to have a hierarchy handler, so a missing one is an error and not a
// null answer.
HierarchyHandler& handlerOf(Rtid runTimeId)
{
    return RunTimeMgr::instance().hierarchyHandlerRef(runTimeId);
}
} // namespace

Hierarchy::Hierarchy() = default;

Hierarchy::~Hierarchy() = default;

Hierarchy::Ptr Hierarchy::hierarchy(SceneItem::Ptr const& item)
{
    return detail::logged("hierarchy", kFile, [&]() -> Ptr {
        return !item || item->path().empty() ? nullptr
                                             : handlerOf(item->runTimeId()).hierarchy(item);
    });
}

SceneItem::Ptr Hierarchy::createItem(Path const& path)
{
    return detail::logged("createItem", kFile, [&]() -> SceneItem::Ptr {
        return path.empty() ? nullptr : handlerOf(path.runTimeId()).createItem(path);
    });
}

bool Hierarchy::reorder(SceneItemList const& orderedList)
{
    return detail::executed(reorderCmd(orderedList));
}

bool Hierarchy::ungroup()
{
    return detail::executed(ungroupCmd());
}

} // namespace Kiv_v4
