#pragma once

#include <memory>
#include <string>
#include <utility>

#include "kiv/sceneItem.h"

#include "assimpEdits.h"
#include "sceneNodes.h"

namespace Kiv_v4::assimp {

/// One node or material of a file, at the path where it is or was mounted. It keeps the mount.
class Item : public SceneItem
{
public:
    Item(const Path& path, std::shared_ptr<FileMount> mount, NodeIndex index)
        : SceneItem(path), _mount(std::move(mount)), _index(index)
    {}

    [[nodiscard]] std::string nodeType() const override
    {
        return nodeTypeName(file().node(_index).type);
    }

    [[nodiscard]] const std::shared_ptr<FileMount>& mount() const noexcept { return _mount; }
    [[nodiscard]] const SceneFile& file() const noexcept { return *_mount->file; }
    [[nodiscard]] NodeIndex index() const noexcept { return _index; }

    /// Whether its path names it: the file is shown, under the same gateway as when the item was
    /// made.
    [[nodiscard]] bool isShown() const noexcept
    {
        const auto& gateway = _mount->gateway();
        return !gateway.empty() && path().nbSegments() == gateway.nbSegments() + 1 &&
               path().isAtOrBelow(gateway);
    }

private:
    const std::shared_ptr<FileMount> _mount;
    const NodeIndex _index;
};

/// The path of the node `index`, which lies at or under the node `top` of the item at `path`.
[[nodiscard]] Path pathBelow(const Path& path, const SceneFile& file, NodeIndex top,
                             NodeIndex index);

/// The item of that node.
[[nodiscard]] std::shared_ptr<Item> itemBelow(const Path& path,
                                              const std::shared_ptr<FileMount>& mount,
                                              NodeIndex top, NodeIndex index);

} // namespace Kiv_v4::assimp
