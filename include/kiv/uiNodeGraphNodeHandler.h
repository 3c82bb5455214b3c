#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/uiNodeGraphNode.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items' `UINodeGraphNode`.
class KIV_EXPORT UINodeGraphNodeHandler
{
public:
    using Ptr = std::shared_ptr<UINodeGraphNodeHandler>;

    UINodeGraphNodeHandler();
    UINodeGraphNodeHandler(const UINodeGraphNodeHandler&) = delete;
    UINodeGraphNodeHandler& operator=(const UINodeGraphNodeHandler&) = delete;
    virtual ~UINodeGraphNodeHandler();

    /// The node of `item`, an item of this run-time, possibly out of date; null if it has none.
    [[nodiscard]] virtual UINodeGraphNode::Ptr uiNodeGraphNode(const SceneItem::Ptr& item) = 0;
};

} // namespace Kiv_v4
