#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::kit {

/// What a run-time shows under one gateway: the base class of its documents. To show one document
/// under several gateways, each mount shares it.
class KIV_EXPORT Mount
{
public:
    using Ptr = std::shared_ptr<Mount>;

    Mount();
    /// A copy is not shown.
    Mount(const Mount& other);
    Mount& operator=(const Mount&) = delete;
    virtual ~Mount();

    /// The gateway that it is shown under now; empty while it is not shown. With a segment after
    /// it, it is the full path of an item, which changes are announced with.
    [[nodiscard]] const Path& gateway() const noexcept { return _gateway; }

    /// Whether it is shown anywhere.
    [[nodiscard]] bool isShown() const noexcept { return !_gateway.empty(); }

private:
    friend class MountTable;

    Path _gateway;
    Path _parkedAt; ///< Empty while it is not parked.
};

/// Which mount is shown under which gateway, whatever the mounts hold; run-times use `Mounts`.
///
/// **Following.** Mounts follow their gateways when these or ancestors of theirs are renamed or
/// moved. When one of them is deleted, the mount is parked: it is not shown, keeps what it holds,
/// and another can be mounted at the path. It is shown again when the gateway or the ancestor comes
/// back, the item at the path is again a gateway into this run-time, and nothing is mounted there.
/// Of several mounts parked at a path, the one that was parked last comes back first. A mount is
/// parked for as long as the run-time lives, unless `unmount` lets go of it or the scene reports
/// the gateway as destroyed.
///
/// Owners of gateways that hold a `GatewayOwner` are followed before the scene tells of the change,
/// so that everybody who hears of it finds the items at their places. All others are followed
/// through the scene that is installed when something is mounted. There other observers may be told
/// before and find nothing: each gateway whose mount has followed or come back is announced with a
/// `SubtreeInvalidate` when everything is in its place. A run-time that only tells that it is about
/// to delete an item (`ObjectPreDelete`) is asked about the item from then on, when something looks
/// for the mount and at the next change.
///
/// **Cost.** Looking for a mount does not depend on their number. Following costs the logarithm of
/// it and the number of mounts concerned. Owners without `GatewayOwner` are asked once for the
/// gateways under each parent of returning mounts, and once again for each of these.
class KIV_EXPORT MountTable
{
public:
    /// For the run-time `runTimeId`, whose components are written with `separator`.
    MountTable(Rtid runTimeId, char separator);
    MountTable(const MountTable&) = delete;
    MountTable& operator=(const MountTable&) = delete;
    /// As `close`.
    ~MountTable();

    /// Shows nothing any more, silently; commands of it refuse to mount with `std::runtime_error`
    /// from now on. A run-time whose interface objects share the table calls it when it goes.
    void close();

    /// The run-time whose mounts they are.
    [[nodiscard]] Rtid runTimeId() const noexcept;

    /// Shows the mount, which is not shown yet, and announces the gateway with a
    /// `SubtreeInvalidate`. Throws `std::invalid_argument`, with the path in the message, for a
    /// null mount, an empty path and a gateway that is in use.
    void mount(const Mount::Ptr& mount, const Path& gateway);

    /// The same as a command with that text; changes nothing yet. It keeps the mount while it is
    /// undone. Executing it throws as `mount` does.
    [[nodiscard]] UndoableCommand::Ptr mountCmd(const Mount::Ptr& mount, const Path& gateway,
                                                const std::string& text);

    /// Takes the mount under the gateway away and announces that or, when none is shown there, lets
    /// go of the one that was parked there last; false when there is neither.
    bool unmount(const Path& gateway);

    /// Follows a gateway by hand, silently, for owners that nobody hears of; false when none is
    /// shown at `gateway`. Throws as `mount` does.
    bool move(const Path& gateway, const Path& newGateway);

protected:
    /// The mount under `gateway`, or null.
    [[nodiscard]] Mount::Ptr find(const Path& gateway) const;

    /// The mount that the item at `path` is in, should there be one: the one under the path without
    /// its last segment, when that segment is of this run-time and its separator; otherwise null.
    [[nodiscard]] Mount::Ptr at(const Path& path) const;

    /// All that are shown; gateways before those under them.
    [[nodiscard]] std::vector<Mount::Ptr> shown() const;

private:
    class State;
    class MountCommand;
    class SceneObserver;

    const std::shared_ptr<State> _state;
};

/// The mounts of a run-time. `Content`, which is derived from `Mount`, is what it shows under one
/// gateway.
///
///     struct Document : kit::Mount { ... };
///     kit::Mounts<Document> documents(registration.id(), ':');
///     documents.mount(std::make_shared<Document>(), gateway->path());
///
/// What is left to the run-time are three lines of its hierarchy handler: `createItem(path)` looks
/// into `documents.at(path)` for `path.segment(path.nbSegments() - 1)`, `rootItems(gateway)` gives
/// the root of `documents.find(gateway)`, and the `parent()` of such a root is
/// `Hierarchy::createItem(path.popSegment())`.
template <class Content>
class Mounts : public MountTable
{
public:
    using MountTable::MountTable;

    /// What is shown under `gateway`, or null.
    [[nodiscard]] std::shared_ptr<Content> find(const Path& gateway) const
    {
        return std::static_pointer_cast<Content>(MountTable::find(gateway));
    }

    /// What the item at `path` is in, should there be one: what is shown under the path without its
    /// last segment, when that segment is of this run-time and its separator; otherwise null.
    [[nodiscard]] std::shared_ptr<Content> at(const Path& path) const
    {
        return std::static_pointer_cast<Content>(MountTable::at(path));
    }

    /// Calls `visit(content)` for all that are shown; gateways before those under them.
    template <class Visit>
    void forEach(Visit visit) const
    {
        for (const auto& mount : shown()) {
            visit(static_cast<Content&>(*mount));
        }
    }
};

} // namespace Kiv_v4::kit
