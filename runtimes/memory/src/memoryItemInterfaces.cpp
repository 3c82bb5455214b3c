#include "memoryItemInterfaces.h"

#include "kiv/runTimeMgr.h"

#include "memoryCamera.h"
#include "memoryLight.h"
#include "memoryMaterial.h"
#include "memoryNodeDef.h"
#include "memoryObject3d.h"
#include "memoryTransform.h"
#include "memoryUiInfo.h"
#include "nodeGraph.h"

namespace Kiv_v4::memory {

void installItemInterfaces(const std::shared_ptr<Tree>& tree)
{
    auto& manager = RunTimeMgr::instance();
    const auto id = tree->runTimeId();
    manager.setTransform3dHandler(id, makeTransform3dHandler(tree));
    manager.setCameraHandler(id, makeCameraHandler(tree));
    manager.setLightHandler(id, makeLightHandler(tree));
    manager.setObject3dHandler(id, makeObject3dHandler(tree));
    manager.setMaterialHandler(id, makeMaterialHandler(tree));
    manager.setNodeDefHandler(id, makeNodeDefHandler(tree));
    manager.setUINodeGraphNodeHandler(id, makeUINodeGraphNodeHandler(tree));
    manager.setUIInfoHandler(id, makeUIInfoHandler(tree));
}

} // namespace Kiv_v4::memory
