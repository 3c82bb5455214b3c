#include "itemInterfaces.h"

#include "kiv/runTimeMgr.h"

#include "camera.h"
#include "light.h"
#include "transform.h"

namespace Kiv_v4::memory {

void installItemInterfaces(const std::shared_ptr<Tree>& tree)
{
    auto& manager = RunTimeMgr::instance();
    const auto id = tree->runTimeId();
    manager.setTransform3dHandler(id, makeTransform3dHandler(tree));
    manager.setCameraHandler(id, makeCameraHandler(tree));
    manager.setLightHandler(id, makeLightHandler(tree));
}

} // namespace Kiv_v4::memory
