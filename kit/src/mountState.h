#pragma once

#include <memory>
#include <vector>

#include "kiv/kit/gateways.h"
#include "kiv/kit/mounts.h"
#include "kiv/observer.h"
#include "kiv/sceneNotification.h"

#include "pathIndex.h"

namespace Kiv_v4::kit {

/// The mounts of a table, which commands and observers share with it.
///
/// Invariants: a mount is shown, parked or neither; the gateway that it knows is the one that it is
/// found under.
class MountTable::State : public GatewayFollower, public std::enable_shared_from_this<State>
{
public:
    State(Rtid runTimeId, char separator);

    /// Nothing is shown or parked any more, nor will it be.
    void close();

    [[nodiscard]] Rtid runTimeId() const noexcept { return _runTimeId; }

    // With announcements, and with news to the followers of gateways under the mount.

    void add(const Mount::Ptr& mount, const Path& gateway);
    bool remove(const Path& gateway);
    /// Wherever it is.
    void remove(Mount& mount);

    bool move(const Path& gateway, const Path& newGateway);

    [[nodiscard]] Mount::Ptr find(const Path& gateway);
    [[nodiscard]] Mount::Ptr at(const Path& path);
    [[nodiscard]] std::vector<Mount::Ptr> shown();

    void itemAdded(const Path& path) override;
    void itemRemoved(const Path& path) override;
    void itemMoved(const Path& oldPath, const Path& newPath) override;

    void hear(const Notification& notification);

private:
    /// A mount that is shown although nobody has said yet that its place is a gateway.
    struct Returned
    {
        Mount::Ptr mount;
        Path parkedAt;
    };

    /// What changes that belong together led to.
    struct Changes
    {
        std::vector<Returned> returned;
        std::vector<Mount::Ptr> moved;
        std::vector<Path> leaving; ///< Items that were to be deleted.
    };

    class Gateways;

    void requireFree(const Path& gateway);
    void show(const Mount::Ptr& mount, const Path& gateway);
    /// Gives the mount that was shown at `gateway`.
    Mount::Ptr hide(const Path& gateway);
    void park(const Mount::Ptr& mount, const Path& gateway);
    /// The mount that was parked last at `gateway`, taken from there.
    Mount::Ptr takeParked(const Path& gateway);

    void parkUnder(const Path& path);
    void moveUnder(const Path& oldPath, const Path& newPath, Changes& changes);
    void resumeUnder(const Path& path, Changes& changes);
    void forgetUnder(const Path& path);

    void apply(const SceneCompositeNotification::Op& op, Changes& changes);
    /// Parks again what did not come back to a gateway, and leaves the others in `changes`.
    void keepAtGateways(Changes& changes);
    void parkLeft(const std::vector<Path>& leaving);
    void askAboutLeaving(const Path& gateway);

    const Rtid _runTimeId;
    const char _separator;
    bool _isOpen = true;
    bool _isAsking = false;
    PathIndex<Mount::Ptr> _shown;
    PathIndex<std::vector<Mount::Ptr>> _parked; ///< None of them empty; the last comes back first.
    std::vector<Path> _leaving; ///< Items that owners said they would delete, and nothing since.
    std::shared_ptr<Observer> _sceneObserver;
};

} // namespace Kiv_v4::kit
