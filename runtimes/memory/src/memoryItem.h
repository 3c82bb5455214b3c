#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "kiv/sceneItem.h"

#include "memoryTree.h"
#include "nodeTypes.h"

namespace Kiv_v4::memory {

/// An item as it was when it was made: path and type do not follow later edits.
class Item : public SceneItem
{
public:
    Item(const Path& path, const Node& node) : SceneItem(path), _nodeType(node.type) {}

    /// The node that the path names while the tree has that version; null if it is not known.
    [[nodiscard]] Node* knownNode(std::uint64_t version) const noexcept
    {
        return version == _version ? _node : nullptr;
    }
    void learnNode(Node& node, std::uint64_t version) const noexcept
    {
        _node = &node;
        _version = version;
    }

    [[nodiscard]] std::string nodeType() const override { return _nodeType; }

    /// The type; for lights of a kind also that of all lights.
    [[nodiscard]] std::vector<std::string> ancestorNodeTypes() const override
    {
        return lightKind(_nodeType).value_or(Light::Other) == Light::Other
                   ? std::vector{_nodeType}
                   : std::vector<std::string>{_nodeType, kLight};
    }

private:
    const std::string _nodeType;
    mutable Node* _node = nullptr;
    mutable std::uint64_t _version = 0;
};

[[nodiscard]] inline SceneItem::Ptr makeItem(const Path& path, const Node& node)
{
    return std::make_shared<Item>(path, node);
}

/// The same for a node in the scene, at `path`.
[[nodiscard]] inline SceneItem::Ptr makeItem(const Tree& tree, const Path& path, Node& node)
{
    auto item = std::make_shared<Item>(path, node);
    item->learnNode(node, tree.version());
    return item;
}

} // namespace Kiv_v4::memory
