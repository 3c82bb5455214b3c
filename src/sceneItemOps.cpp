#include "kiv/sceneItemOps.h"

#include "detail/dispatch.h"

namespace Kiv_v4 {

SceneItemOps::SceneItemOps() = default;

SceneItemOps::~SceneItemOps() = default;

SceneItemOps::Ptr SceneItemOps::sceneItemOps(const SceneItem::Ptr& item)
{
    return detail::dispatch("sceneItemOps", "src/sceneItemOps", item,
                            &RunTimeMgr::sceneItemOpsHandler,
                            [&](auto& handler) { return handler.sceneItemOps(item); });
}

SceneItemOpsHandler::SceneItemOpsHandler() = default;

SceneItemOpsHandler::~SceneItemOpsHandler() = default;

} // namespace Kiv_v4
