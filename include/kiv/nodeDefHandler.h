#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/nodeDef.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time installs this handler to describe its node types.
class KIV_EXPORT NodeDefHandler
{
public:
    using Ptr = std::shared_ptr<NodeDefHandler>;

    NodeDefHandler();
    NodeDefHandler(const NodeDefHandler&) = delete;
    NodeDefHandler& operator=(const NodeDefHandler&) = delete;
    virtual ~NodeDefHandler();

    /// The definition of the item's node type; null if there is none.
    [[nodiscard]] virtual NodeDef::Ptr definition(const SceneItem::Ptr& item) = 0;

    /// The definition of a node type; null if there is none.
    [[nodiscard]] virtual NodeDef::Ptr definition(const std::string& type) = 0;

    /// All definitions with that classification, or all definitions if it is empty, in the order of
    /// a menu.
    [[nodiscard]] virtual std::vector<NodeDef::Ptr>
    definitions(const std::string& classification) = 0;
};

} // namespace Kiv_v4
