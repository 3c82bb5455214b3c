#include "kiv/contextOps.h"

#include "detail/dispatch.h"
#include "detail/executeIfAny.h"

namespace Kiv_v4 {

ContextOps::ContextOps() = default;

ContextOps::~ContextOps() = default;

ContextOps::Ptr ContextOps::contextOps(const SceneItem::Ptr& item)
{
    return detail::dispatch("contextOps", "src/contextOps", item, &RunTimeMgr::contextOpsHandler,
                            [&](auto& handler) { return handler.contextOps(item); });
}

void ContextOps::doOp(const ItemPath& itemPath)
{
    detail::executeIfAny(doOpCmd(itemPath));
}

ContextOpsHandler::ContextOpsHandler() = default;

ContextOpsHandler::~ContextOpsHandler() = default;

} // namespace Kiv_v4
