#include "kiv/sceneSegmentHandler.h"

#include "kiv/path.h"
#include "kiv/runTimeMgr.h"
#include "kiv/selection.h"

namespace Kiv_v4 {

SceneSegmentHandler::SceneSegmentHandler() = default;

SceneSegmentHandler::~SceneSegmentHandler() = default;

SceneSegmentHandler::Ptr SceneSegmentHandler::sceneSegmentHandler(Rtid runTimeId)
{
    return RunTimeMgr::instance().sceneSegmentHandler(runTimeId);
}

bool SceneSegmentHandler::isGateway(const Path& path)
{
    const auto handler = sceneSegmentHandler(path.runTimeId());
    return handler && handler->isGatewayItem(path);
}

Selection SceneSegmentHandler::findGatewayItems(const Path& path)
{
    const auto handler = sceneSegmentHandler(path.runTimeId());
    return handler ? handler->gatewayItems(path) : Selection();
}

Selection SceneSegmentHandler::findGatewayItems(const Path& path, Rtid nestedRuntimeId)
{
    const auto handler = sceneSegmentHandler(path.runTimeId());
    return handler ? handler->gatewayItems(path, nestedRuntimeId) : Selection();
}

} // namespace Kiv_v4
