#pragma once

#include <memory>
#include <optional>

#include "kiv/kit/mounts.h"
#include "kiv/path.h"

#include "assimpItem.h"
#include "mountedNode.h"

namespace Kiv_v4::assimp {

/// The mounted files, and their items.
class Mounts : public kit::Mounts<FileMount>
{
public:
    using kit::Mounts<FileMount>::Mounts;

    /// The file under `gateway`; null if there is none.
    [[nodiscard]] std::shared_ptr<const SceneFile> file(const Path& gateway) const;

    /// A command that shows `file`, which must not be null, under the gateway.
    [[nodiscard]] UndoableCommand::Ptr mountFileCmd(const std::shared_ptr<const SceneFile>& file,
                                                    const Path& gateway);

    /// A command that also shows the file under `source`, with its present edits, under another
    /// gateway. Throws `std::invalid_argument` if there is none.
    [[nodiscard]] UndoableCommand::Ptr copyMountCmd(const Path& source, const Path& gateway);

    /// The root item under `gateway`; null if there is none.
    [[nodiscard]] std::shared_ptr<Item> rootItem(const Path& gateway) const;

    /// The item of a node without a parent; the mount is shown.
    [[nodiscard]] std::shared_ptr<Item> topItem(const std::shared_ptr<FileMount>& mount,
                                                NodeIndex top) const;

    /// The item of a material; the mount is shown.
    [[nodiscard]] std::shared_ptr<Item> materialItem(const std::shared_ptr<FileMount>& mount,
                                                     NodeIndex index) const;

    /// The item at `path`; null if there is none.
    [[nodiscard]] std::shared_ptr<Item> item(const Path& path) const;

    /// The node or material of `item`; `std::nullopt` if there is none.
    [[nodiscard]] std::optional<MountedNode> nodeOrMaterial(const SceneItem::Ptr& item) const;

    /// The node of the scene of `item`; `std::nullopt` if there is none.
    [[nodiscard]] std::optional<MountedNode> node(const SceneItem::Ptr& item) const;
};

} // namespace Kiv_v4::assimp
