#include "kiv/hierarchy.h"

#include "kiv/hierarchyHandler.h"

#include "detail/dispatch.h"
#include "detail/executeIfAny.h"

namespace Kiv_v4 {

namespace {
constexpr auto kFile = "src/hierarchy";

// Every run-time should have a hierarchy handler, so a missing one is an error and does not return
// null.
HierarchyHandler& handlerOf(Rtid runTimeId)
{
    return RunTimeMgr::instance().hierarchyHandlerRef(runTimeId);
}
} // namespace

Hierarchy::Hierarchy() = default;

Hierarchy::~Hierarchy() = default;

Hierarchy::Ptr Hierarchy::hierarchy(const SceneItem::Ptr& item)
{
    return detail::logAndRethrow("hierarchy", kFile, [&]() -> Ptr {
        return !item || item->path().empty() ? nullptr
                                             : handlerOf(item->runTimeId()).hierarchy(item);
    });
}

SceneItem::Ptr Hierarchy::createItem(const Path& path)
{
    return detail::logAndRethrow("createItem", kFile, [&]() -> SceneItem::Ptr {
        return path.empty() ? nullptr : handlerOf(path.runTimeId()).createItem(path);
    });
}

bool Hierarchy::reorder(const SceneItemList& orderedList)
{
    return detail::executeIfAny(reorderCmd(orderedList));
}

bool Hierarchy::ungroup()
{
    return detail::executeIfAny(ungroupCmd());
}

} // namespace Kiv_v4
