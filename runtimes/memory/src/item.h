#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/sceneItem.h"

#include "nodeTypes.h"
#include "tree.h"

namespace Kiv_v4::memory {

/// An item as it was when it was asked for: path and type do not follow later edits.
class Item : public SceneItem
{
public:
    Item(const Path& path, const Node& node) : SceneItem(path), _nodeType(node.type) {}

    [[nodiscard]] std::string nodeType() const override { return _nodeType; }

    /// The type, for the lights of a kind also that of all lights.
    [[nodiscard]] std::vector<std::string> ancestorNodeTypes() const override
    {
        return lightKind(_nodeType).value_or(Light::Other) == Light::Other
                   ? std::vector{_nodeType}
                   : std::vector<std::string>{_nodeType, kLight};
    }

private:
    std::string _nodeType;
};

[[nodiscard]] inline SceneItem::Ptr makeItem(const Path& path, const Node& node)
{
    return std::make_shared<Item>(path, node);
}

} // namespace Kiv_v4::memory
