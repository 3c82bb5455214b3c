#pragma once

#include <memory>
#include <optional>

#include "kiv/kit/mounts.h"
#include "kiv/path.h"

#include "assimpItem.h"
#include "mountedNode.h"

namespace Kiv_v4::assimp {

/// The files that are mounted, and the items that this makes.
class Mounts : public kit::Mounts<FileMount>
{
public:
    using kit::Mounts<FileMount>::Mounts;

    /// The file under `gateway`, or null.
    [[nodiscard]] std::shared_ptr<const SceneFile> file(const Path& gateway) const;

    /// The root item under `gateway`, or null.
    [[nodiscard]] std::shared_ptr<Item> rootItem(const Path& gateway) const;

    /// The item of a node without a parent; the mount is shown.
    [[nodiscard]] std::shared_ptr<Item> topItem(const std::shared_ptr<FileMount>& mount,
                                                NodeIndex top) const;

    /// The item of a material; the mount is shown.
    [[nodiscard]] std::shared_ptr<Item> materialItem(const std::shared_ptr<FileMount>& mount,
                                                     NodeIndex index) const;

    /// The item at `path`, or null.
    [[nodiscard]] std::shared_ptr<Item> item(const Path& path) const;

    /// The node or material that `item` stands for, or none.
    [[nodiscard]] std::optional<MountedNode> nodeOrMaterial(const SceneItem::Ptr& item) const;

    /// The node of the scene that `item` stands for, or none.
    [[nodiscard]] std::optional<MountedNode> node(const SceneItem::Ptr& item) const;
};

} // namespace Kiv_v4::assimp
