#pragma once

#include <memory>
#include <string>

#include "kiv/sceneItem.h"

#include "tree.h"

namespace Kiv_v4::memory {

/// An item as it was when it was asked for: path and type do not follow later edits.
class Item : public SceneItem
{
public:
    Item(const Path& path, const Node& node) : SceneItem(path), _nodeType(node.type) {}

    [[nodiscard]] std::string nodeType() const override { return _nodeType; }

private:
    std::string _nodeType;
};

[[nodiscard]] inline SceneItem::Ptr makeItem(const Path& path, const Node& node)
{
    return std::make_shared<Item>(path, node);
}

} // namespace Kiv_v4::memory
