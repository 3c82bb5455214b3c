#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"

namespace Kiv_v4::kit {

/// A run-time whose items are shown under gateways, which are items of other run-times, and which
/// those tell of what happens to them. `Mounts` is one.
///
/// It is told right after a change, before the scene is, also when no scene is installed, and of
/// each change by itself, also under a notification guard.
class KIV_EXPORT GatewayFollower
{
public:
    /// From now on `follower` is told of the items of all `GatewayOwner`s, for as long as it lives.
    static void add(const std::shared_ptr<GatewayFollower>& follower);

    GatewayFollower();
    GatewayFollower(const GatewayFollower&) = delete;
    GatewayFollower& operator=(const GatewayFollower&) = delete;
    virtual ~GatewayFollower();

    /// The item at `path` came into the scene, or back into it, with all that is under it.
    virtual void itemAdded(const Path& path) = 0;

    /// The item that was at `path` left the scene with all that is under it. Undo may bring it
    /// back.
    virtual void itemRemoved(const Path& path) = 0;

    /// The item that was at `oldPath` is at `newPath` with all that is under it.
    virtual void itemMoved(const Path& oldPath, const Path& newPath) = 0;
};

/// What a run-time that has gateways holds, to tell those whose items are shown under them of its
/// changes before it tells the scene. So whoever hears of a rename through the scene, a path
/// subject for one, finds the items under the gateways at their new paths.
///
///     kit::GatewayOwner owner(id, [tree](const Path& item) { return tree->gateway(item); });
///     ...
///     kit::GatewayOwner::itemMoved(oldPath, item->path()); // then Scene::instance().notify(...)
///
/// A run-time that holds one calls these functions for each item that it adds, removes, renames or
/// moves. What the scene tells of its items is not taken into account then. Run-times that hold
/// none are followed through the scene.
class KIV_EXPORT GatewayOwner
{
public:
    /// The run-time that the item at a path leads into; 0 when it is no gateway, or no item.
    using Target = std::function<Rtid(const Path& item)>;

    /// Throws `std::invalid_argument` when `runTimeId` has one already.
    GatewayOwner(Rtid runTimeId, Target target);
    GatewayOwner(const GatewayOwner&) = delete;
    GatewayOwner& operator=(const GatewayOwner&) = delete;
    ~GatewayOwner();

    /// Tell all followers, as `GatewayFollower` says. What a follower throws goes to the log, and
    /// the others are told.
    static void itemAdded(const Path& path);
    static void itemRemoved(const Path& path);
    static void itemMoved(const Path& oldPath, const Path& newPath);

    /// Whether the run-time holds one.
    [[nodiscard]] static bool tells(Rtid runTimeId);

    /// The run-time that the item at `path` leads into, 0 for none, as the owner says. Nothing when
    /// its run-time holds no `GatewayOwner`.
    [[nodiscard]] static std::optional<Rtid> target(const Path& path);

private:
    const Rtid _runTimeId;
};

} // namespace Kiv_v4::kit
