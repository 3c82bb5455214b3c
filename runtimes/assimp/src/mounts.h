#pragma once

#include <memory>
#include <optional>
#include <unordered_map>

#include "kiv/path.h"
#include "kiv/rtid.h"

#include "edits.h"
#include "item.h"
#include "mountedNode.h"

namespace Kiv_v4::assimp {

/// Which file is shown under which gateway with which edits, and the items that this makes.
class Mounts
{
public:
    explicit Mounts(Rtid runTimeId) : _runTimeId(runTimeId) {}

    /// Throws `std::invalid_argument` for a null file, an empty gateway and a gateway that is in
    /// use.
    void add(const std::shared_ptr<const SceneFile>& file, const Path& gateway);
    bool remove(const Path& gateway);

    /// Throws `std::invalid_argument` when `newGateway` is empty or in use.
    bool move(const Path& gateway, const Path& newGateway);

    /// Moves the mounts of the gateways at and under `oldPath` along with it. A mount that
    /// is in the way of another is kept, the other dropped.
    void moveAll(const Path& oldPath, const Path& newPath);

    /// The file under `gateway`, or null.
    [[nodiscard]] std::shared_ptr<const SceneFile> file(const Path& gateway) const;

    /// The root item under `gateway`, or null.
    [[nodiscard]] std::shared_ptr<Item> rootItem(const Path& gateway) const;

    /// The item of a material of the file that is mounted under `gateway`.
    [[nodiscard]] std::shared_ptr<Item> materialItem(const Path& gateway, NodeIndex index) const;

    /// The item at `path`, or null.
    [[nodiscard]] std::shared_ptr<Item> item(const Path& path) const;

    /// The node or material that `item` stands for, or none.
    [[nodiscard]] std::optional<MountedNode> nodeOrMaterial(const SceneItem::Ptr& item) const;

    /// The node of the scene that `item` stands for, or none.
    [[nodiscard]] std::optional<MountedNode> node(const SceneItem::Ptr& item) const;

private:
    void requireFree(const Path& gateway) const;

    /// The item of a node that has no parent.
    [[nodiscard]] std::shared_ptr<Item>
    topItem(const Path& gateway, const std::shared_ptr<const SceneFile>& file, NodeIndex top) const;

    /// The mount that holds an item at `path`, or null.
    [[nodiscard]] const Mount* mountOf(const Path& path) const;

    const Rtid _runTimeId;
    std::unordered_map<Path, Mount> _mounts;
};

} // namespace Kiv_v4::assimp
