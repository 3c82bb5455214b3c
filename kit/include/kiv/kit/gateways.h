#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"

namespace Kiv_v4::kit {

/// A run-time whose items are shown under gateways of other run-times, which notify it of changes
/// to the gateways. `Mounts` is one.
///
/// It is notified right after a change, before the scene is, even if no scene is installed, and of
/// each change by itself, even under a notification guard.
class KIV_EXPORT GatewayFollower
{
public:
    /// From now on notifies `follower`, for as long as it lives, of the items of all
    /// `GatewayOwner`s.
    static void add(const std::shared_ptr<GatewayFollower>& follower);

    GatewayFollower();
    GatewayFollower(const GatewayFollower&) = delete;
    GatewayFollower& operator=(const GatewayFollower&) = delete;
    virtual ~GatewayFollower();

    /// The item at `path` came into the scene, or back into it, with its descendants.
    virtual void itemAdded(const Path& path) = 0;

    /// The item that was at `path` left the scene with its descendants. Undo may bring it back.
    virtual void itemRemoved(const Path& path) = 0;

    /// The item that was at `oldPath` is at `newPath` with its descendants.
    virtual void itemMoved(const Path& oldPath, const Path& newPath) = 0;
};

/// A run-time with gateways holds one to notify the run-times whose items are shown under them of
/// its changes before it notifies the scene. So observers of the scene, such as path subjects, find
/// the items under renamed gateways at their new paths.
///
///     kit::GatewayOwner owner(id, [tree](const Path& item) { return tree->gateway(item); });
///     ...
///     kit::GatewayOwner::itemMoved(oldPath, item->path()); // then Scene::instance().notify(...)
///
/// A run-time that holds one must call these functions for each item that it adds, removes, renames
/// or moves; notifications of the scene about its items are then ignored. Run-times that hold none
/// are followed through the scene.
class KIV_EXPORT GatewayOwner
{
public:
    /// Returns the run-time that the item at a path leads into; 0 if it is not a gateway or does
    /// not exist.
    using Target = std::function<Rtid(const Path& item)>;

    /// Throws `std::invalid_argument` if `runTimeId` already has one.
    GatewayOwner(Rtid runTimeId, Target target);
    GatewayOwner(const GatewayOwner&) = delete;
    GatewayOwner& operator=(const GatewayOwner&) = delete;
    ~GatewayOwner();

    /// Notify all followers with the function of the same name of `GatewayFollower`. Exceptions of
    /// a follower go to the log, and the others are still notified.
    static void itemAdded(const Path& path);
    static void itemRemoved(const Path& path);
    static void itemMoved(const Path& oldPath, const Path& newPath);

    /// Whether the run-time holds a `GatewayOwner`.
    [[nodiscard]] static bool tells(Rtid runTimeId);

    /// The run-time that the item at `path` leads into, 0 for none, from the function `Target` of
    /// its run-time. `std::nullopt` if that holds no `GatewayOwner`.
    [[nodiscard]] static std::optional<Rtid> target(const Path& path);

private:
    const Rtid _runTimeId;
};

} // namespace Kiv_v4::kit
