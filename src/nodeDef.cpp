#include "kiv/nodeDef.h"

#include "detail/dispatch.h"

namespace Kiv_v4 {

NodeDef::NodeDef() = default;

NodeDef::~NodeDef() = default;

NodeDef::Ptr NodeDef::definition(const Rtid& runTimeId, const std::string& type)
{
    return detail::logAndRethrow("definition", "src/nodeDef", [&]() -> Ptr {
        const auto handler = RunTimeMgr::instance().nodeDefHandler(runTimeId);
        return handler ? handler->definition(type) : nullptr;
    });
}

NodeDefHandler::NodeDefHandler() = default;

NodeDefHandler::~NodeDefHandler() = default;

} // namespace Kiv_v4
