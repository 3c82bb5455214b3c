#include "kiv/uiNodeGraphNode.h"

#include "detail/dispatch.h"
#include "detail/executeIfAny.h"

namespace Kiv_v4 {

UINodeGraphNode::UINodeGraphNode() = default;

UINodeGraphNode::~UINodeGraphNode() = default;

UINodeGraphNode::Ptr UINodeGraphNode::uiNodeGraphNode(const SceneItem::Ptr& item)
{
    return detail::dispatch("uiNodeGraphNode", "src/uiNodeGraphNode", item,
                            &RunTimeMgr::uiNodeGraphNodeHandler,
                            [&](auto& handler) { return handler.uiNodeGraphNode(item); });
}

void UINodeGraphNode::setPosition(const TypedVectorN<float, 2>& position)
{
    detail::executeIfAny(setPositionCmd(position));
}

UINodeGraphNode_v4_1::Ptr UINodeGraphNode_v4_1::uiNodeGraphNode(const SceneItem::Ptr& item)
{
    return std::dynamic_pointer_cast<UINodeGraphNode_v4_1>(UINodeGraphNode::uiNodeGraphNode(item));
}

UINodeGraphNode_v4_1::~UINodeGraphNode_v4_1() = default;

void UINodeGraphNode_v4_1::setSize(const TypedVectorN<float, 2>& size)
{
    detail::executeIfAny(setSizeCmd(size));
}

UINodeGraphNodeHandler::UINodeGraphNodeHandler() = default;

UINodeGraphNodeHandler::~UINodeGraphNodeHandler() = default;

} // namespace Kiv_v4
