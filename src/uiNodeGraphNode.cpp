#include "kiv/uiNodeGraphNode.h"

#include "detail/dispatch.h"
#include "detail/executeIfAny.h"

namespace Kiv_v4 {

UINodeGraphNode::UINodeGraphNode() = default;

UINodeGraphNode::~UINodeGraphNode() = default;

UINodeGraphNode::Ptr UINodeGraphNode::uiNodeGraphNode(SceneItem::Ptr const& item)
{
    return detail::dispatch("uiNodeGraphNode", "src/uiNodeGraphNode", item,
                            &RunTimeMgr::uiNodeGraphNodeHandler,
                            [&](auto& handler) { return handler.uiNodeGraphNode(item); });
}

void UINodeGraphNode::setPosition(TypedVectorN<float, 2> const& position)
{
    detail::executeIfAny(setPositionCmd(position));
}

UINodeGraphNode_v4_1::Ptr UINodeGraphNode_v4_1::uiNodeGraphNode(SceneItem::Ptr const& item)
{
    return std::dynamic_pointer_cast<UINodeGraphNode_v4_1>(UINodeGraphNode::uiNodeGraphNode(item));
}

UINodeGraphNode_v4_1::~UINodeGraphNode_v4_1() = default;

void UINodeGraphNode_v4_1::setSize(TypedVectorN<float, 2> const& size)
{
    detail::executeIfAny(setSizeCmd(size));
}

UINodeGraphNodeHandler::UINodeGraphNodeHandler() = default;

UINodeGraphNodeHandler::~UINodeGraphNodeHandler() = default;

} // namespace Kiv_v4
