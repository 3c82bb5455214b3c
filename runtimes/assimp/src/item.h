#pragma once

#include <memory>
#include <string>
#include <utility>

#include "kiv/sceneItem.h"

#include "sceneNodes.h"

namespace Kiv_v4::assimp {

/// One node or material of a file at the path where it is, or was, mounted. It keeps the file.
class Item : public SceneItem
{
public:
    Item(const Path& path, std::shared_ptr<const SceneFile> file, NodeIndex index)
        : SceneItem(path), _file(std::move(file)), _index(index)
    {}

    [[nodiscard]] std::string nodeType() const override
    {
        return nodeTypeName(_file->node(_index).type);
    }

    [[nodiscard]] const std::shared_ptr<const SceneFile>& file() const noexcept { return _file; }
    [[nodiscard]] NodeIndex index() const noexcept { return _index; }

private:
    const std::shared_ptr<const SceneFile> _file;
    const NodeIndex _index;
};

/// The item of the node `index`, which lies at or under the node `top` of the item at `path`.
[[nodiscard]] std::shared_ptr<Item> itemBelow(const Path& path,
                                              const std::shared_ptr<const SceneFile>& file,
                                              NodeIndex top, NodeIndex index);

} // namespace Kiv_v4::assimp
