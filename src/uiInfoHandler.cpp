#include "kiv/uiInfoHandler.h"

#include "kiv/runTimeMgr.h"

namespace Kiv_v4 {

UIInfoHandler::UIInfoHandler() = default;

UIInfoHandler::~UIInfoHandler() = default;

UIInfoHandler::Ptr UIInfoHandler::uiInfoHandler(Rtid runTimeId)
{
    return RunTimeMgr::instance().uiInfoHandler(runTimeId);
}

UIInfoHandler::Icon UIInfoHandler::treeViewIcon(const SceneItem::Ptr&) const
{
    return {};
}

std::string UIInfoHandler::treeViewTooltip(const SceneItem::Ptr&) const
{
    return {};
}

} // namespace Kiv_v4
