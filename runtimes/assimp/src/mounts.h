#pragma once

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

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

    [[nodiscard]] Rtid runTimeId() const noexcept { return _runTimeId; }

    /// Shows a mount that is not shown. Throws `std::invalid_argument` for an empty gateway and one
    /// that is in use.
    void add(const Mount& mount, const Path& gateway);

    /// Takes the mount under `gateway` away or, when none is shown there, the one parked last.
    bool remove(const Path& gateway);

    /// Takes the mount away wherever it is, shown or parked.
    void remove(const Mount& mount);

    /// Throws `std::invalid_argument` when `newGateway` is empty or in use.
    bool move(const Path& gateway, const Path& newGateway);

    /// Moves the mounts of the gateways at and under `oldPath` along with it, and gives the
    /// gateways that they are under now. A mount in the way of another, which is a parked one that
    /// came back too early, is parked.
    std::vector<Path> moveAll(const Path& oldPath, const Path& newPath);

    /// Shows the mounts of the gateways at and under `path` no longer, but keeps them.
    void park(const Path& path);

    /// The gateways at and under `path` that have parked mounts and show none.
    [[nodiscard]] std::vector<Path> parkedUnder(const Path& path) const;

    /// Shows the mount that was parked last at `gateway`, which has one and shows none.
    void resume(const Path& gateway);

    /// Takes all mounts of the gateways at and under `path` away, shown or parked.
    void removeAll(const Path& path);

    /// The mount under `gateway`, or null.
    [[nodiscard]] const Mount* find(const Path& gateway) const;

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
    using Shown = std::unordered_map<Path, Mount>;

    struct Parked
    {
        Path gateway;
        Mount mount;
    };

    void requireFree(const Path& gateway) const;

    /// Parks a mount that is shown; gives the next one.
    Shown::iterator parkMount(Shown::iterator mount);

    /// The item of a node that has no parent.
    [[nodiscard]] std::shared_ptr<Item>
    topItem(const Path& gateway, const std::shared_ptr<const SceneFile>& file, NodeIndex top) const;

    /// The mount that holds an item at `path`, or null.
    [[nodiscard]] const Mount* mountOf(const Path& path) const;

    /// The mount parked last at `gateway`, or the end.
    [[nodiscard]] std::vector<Parked>::iterator lastParked(const Path& gateway);

    const Rtid _runTimeId;
    Shown _mounts;
    std::vector<Parked> _parked; ///< In the order in which they were parked.
};

} // namespace Kiv_v4::assimp
