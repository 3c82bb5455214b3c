#include "itemInterfaces.h"

#include "kiv/runTimeMgr.h"

#include "transform.h"

namespace Kiv_v4::memory {

void installItemInterfaces(const std::shared_ptr<Tree>& tree)
{
    auto& manager = RunTimeMgr::instance();
    const auto id = tree->runTimeId();
    manager.setTransform3dHandler(id, makeTransform3dHandler(tree));
}

} // namespace Kiv_v4::memory
