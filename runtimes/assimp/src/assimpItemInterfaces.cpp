#include "assimpItemInterfaces.h"

#include "kiv/runTimeMgr.h"

#include "assimpAttributes.h"
#include "assimpCamera.h"
#include "assimpLight.h"
#include "assimpMaterial.h"
#include "assimpObject3d.h"
#include "assimpTransform.h"
#include "assimpUiInfo.h"

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
