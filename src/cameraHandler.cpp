#include "kiv/cameraHandler.h"

#include "kiv/path.h"
#include "kiv/runTimeMgr.h"
#include "kiv/sceneSegmentHandler.h"

namespace Kiv_v4 {

CameraHandler::CameraHandler() = default;

CameraHandler::~CameraHandler() = default;

Selection CameraHandler::find(Path const& path)
{
    const auto handler = RunTimeMgr::instance().cameraHandler(path.runTimeId());
    return handler ? handler->findCameras(path) : Selection();
}

Selection CameraHandler::findAll(Path const& path)
{
    auto result = find(path);
    for (const auto& gateway : SceneSegmentHandler::findGatewayItems(path)) {
        if (gateway->path() == path) {
            continue; // a run-time that counts the path itself: it was searched above
        }
        for (const auto& camera : findAll(gateway->path())) {
            result.append(camera);
        }
    }
    return result;
}

} // namespace Kiv_v4
