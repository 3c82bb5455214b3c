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
/// Invariants: a mount is shown, parked or neither; its `gateway()` is the key under which it is
/// found.
class MountTable::State : public GatewayFollower, public std::enable_shared_from_this<State>
{
public:
    State(Rtid runTimeId, char separator);

    /// Drops all mounts, for good.
    void close();

    [[nodiscard]] Rtid runTimeId() const noexcept { return _runTimeId; }

    // These announce the change and notify the followers of gateways under the mount.

    void add(const Mount::Ptr& mount, const Path& gateway);
    bool remove(const Path& gateway);
    /// Whether it is shown or parked.
    void remove(Mount& mount);

    bool move(const Path& gateway, const Path& newGateway);

    [[nodiscard]] Mount::Ptr find(const Path& gateway);
    [[nodiscard]] Mount::Ptr at(const Path& path);
    [[nodiscard]] std::vector<Mount::Ptr> shown();

    void itemAdded(const Path& path) override;
    void itemRemoved(const Path& path) override;
    void itemMoved(const Path& oldPath, const Path& newPath) override;

    void receive(const Notification& notification);

private:
    /// A shown mount whose place is not known to be a gateway yet.
    struct Returned
    {
        Mount::Ptr mount;
        Path parkedAt;
    };

    /// The results of changes that belong together.
    struct Changes
    {
        std::vector<Returned> returned;
        std::vector<Mount::Ptr> moved;
        std::vector<Path> leaving; ///< Items that were about to be deleted.
    };

    class Gateways;

    void requireFree(const Path& gateway);
    void show(const Mount::Ptr& mount, const Path& gateway);
    /// Returns the mount that was shown at `gateway`.
    Mount::Ptr hide(const Path& gateway);
    void park(const Mount::Ptr& mount, const Path& gateway);
    /// Takes the mount that was parked last at `gateway`.
    Mount::Ptr takeParked(const Path& gateway);

    void parkUnder(const Path& path);
    void moveUnder(const Path& oldPath, const Path& newPath, Changes& changes);
    void resumeUnder(const Path& path, Changes& changes);
    void forgetUnder(const Path& path);

    void apply(const SceneCompositeNotification::Op& op, Changes& changes);
    /// Parks the mounts again that did not come back to a gateway, and leaves the others in
    /// `changes`.
    void keepAtGateways(Changes& changes);
    void parkLeft(const std::vector<Path>& leaving);
    void askAboutLeaving(const Path& gateway);

    const Rtid _runTimeId;
    const char _separator;
    bool _isOpen = true;
    bool _isAsking = false;
    PathIndex<Mount::Ptr> _shown;
    PathIndex<std::vector<Mount::Ptr>> _parked; ///< None of them empty; the last comes back first.
    std::vector<Path>
        _leaving; ///< Items that owners announced to delete, without a further announcement.
    std::shared_ptr<Observer> _sceneObserver;
};

} // namespace Kiv_v4::kit
