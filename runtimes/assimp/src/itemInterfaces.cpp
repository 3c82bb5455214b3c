#include "itemInterfaces.h"

#include "kiv/runTimeMgr.h"

#include "attributes.h"
#include "camera.h"
#include "light.h"
#include "material.h"
#include "object3d.h"
#include "transform.h"
#include "uiInfo.h"

namespace Kiv_v4::assimp {

void installItemInterfaces(Rtid runTimeId, const std::shared_ptr<const Mounts>& mounts)
{
    auto& manager = RunTimeMgr::instance();
    manager.setTransform3dHandler(runTimeId, makeTransform3dHandler(mounts));
    manager.setCameraHandler(runTimeId, makeCameraHandler(mounts));
    manager.setLightHandler(runTimeId, makeLightHandler(mounts));
    manager.setObject3dHandler(runTimeId, makeObject3dHandler(mounts));
    manager.setMaterialHandler(runTimeId, makeMaterialHandler(mounts));
    manager.setAttributesHandler(runTimeId, makeAttributesHandler(mounts));
    manager.setUIInfoHandler(runTimeId, makeUIInfoHandler(mounts));
}

} // namespace Kiv_v4::assimp
