#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/sceneFileHandler.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::kit {

/// The content that a run-time shows under one gateway: the base class of its documents. To show
/// one document under several gateways, make a mount for each that shares it.
class KIV_EXPORT Mount
{
public:
    using Ptr = std::shared_ptr<Mount>;

    Mount();
    /// A copy is not shown.
    Mount(const Mount& other);
    Mount& operator=(const Mount&) = delete;
    virtual ~Mount();

    /// The gateway that it is shown under now; empty while it is not shown. Append a segment to it
    /// to get the full path of an item, for announcing changes.
    [[nodiscard]] const Path& gateway() const noexcept { return _gateway; }

    /// Whether it is shown anywhere.
    [[nodiscard]] bool isShown() const noexcept { return !_gateway.empty(); }

    /// The file that it was read from, as it was given to the `SceneFileHandler`; empty at first.
    std::string fileName;

private:
    friend class MountTable;

    Path _gateway;
    Path _parkedAt; ///< Empty while it is not parked.
};

/// The mounts of a run-time and their gateways, independent of the content; run-times use `Mounts`.
///
/// **Following.** Mounts follow their gateways when these or their ancestors are renamed or moved.
/// When one of them is deleted, the mount is parked: it is not shown, keeps its content, and
/// another can be mounted at the path. It is shown again when the gateway or the ancestor comes
/// back, the item at the path is again a gateway into this run-time, and nothing is mounted there.
/// Of several mounts parked at a path, the one that was parked last comes back first. A mount stays
/// parked for as long as the run-time lives, unless `unmount` drops it or the scene reports the
/// gateway as destroyed.
///
/// Mounts follow run-times that hold a `GatewayOwner` before the scene announces the change, so
/// that all its observers find the items at their places. Mounts follow all other run-times through
/// the scene that is installed when something is mounted. There other observers may be notified
/// earlier and find nothing: when every mount is in its place, each gateway whose mount has
/// followed or come back is announced with a `SubtreeInvalidate`. If a run-time only announces that
/// it is about to delete an item (`ObjectPreDelete`), the table checks whether the item exists when
/// something looks for the mount and at the next change.
///
/// **Cost.** Looking for a mount does not depend on the number of mounts. Following is logarithmic
/// in that number and linear in the number of affected mounts. Run-times without `GatewayOwner` are
/// queried once for the gateways under each parent of returning mounts, and once again for each of
/// these.
class KIV_EXPORT MountTable
{
public:
    /// Makes the table of the run-time `runTimeId`, which writes its components with `separator`.
    MountTable(Rtid runTimeId, char separator);
    MountTable(const MountTable&) = delete;
    MountTable& operator=(const MountTable&) = delete;
    /// Calls `close`.
    ~MountTable();

    /// Shows nothing from now on, without an announcement; its commands that mount then throw
    /// `std::runtime_error`. A run-time whose interface objects share the table must call it before
    /// it is unregistered.
    void close();

    /// The run-time of the mounts.
    [[nodiscard]] Rtid runTimeId() const noexcept;

    /// Shows the mount, which must not be shown yet, and announces the gateway with a
    /// `SubtreeInvalidate`. Throws `std::invalid_argument` with the path in the message if the
    /// mount is null, the path is empty or the gateway is in use.
    void mount(const Mount::Ptr& mount, const Path& gateway);

    /// Returns a command with that text that does the same; changes nothing yet. The command keeps
    /// the mount while it is undone. Executing it throws as `mount` does.
    [[nodiscard]] UndoableCommand::Ptr mountCmd(const Mount::Ptr& mount, const Path& gateway,
                                                const std::string& text);

    /// Takes the mount under the gateway away and announces that or, if none is shown there, drops
    /// the one that was parked there last. Returns false if there is neither.
    bool unmount(const Path& gateway);

    /// Makes the mount follow a gateway without an announcement, for run-times that announce no
    /// changes. Returns false if none is shown at `gateway`. Throws as `mount` does.
    bool move(const Path& gateway, const Path& newGateway);

protected:
    /// The mount under `gateway`; null if there is none.
    [[nodiscard]] Mount::Ptr find(const Path& gateway) const;

    /// As the function of that name below, whatever the mounts hold.
    [[nodiscard]] static SceneFileHandler::Ptr
    fileHandler(const std::shared_ptr<MountTable>& mounts, std::vector<std::string> suffixes,
                std::function<Mount::Ptr(const std::string& file)> read);

    /// The mount that an item at `path` would belong to: the one under the path without its last
    /// segment, if that segment has this run-time and its separator; otherwise null.
    [[nodiscard]] Mount::Ptr at(const Path& path) const;

    /// All shown mounts; gateways before those under them.
    [[nodiscard]] std::vector<Mount::Ptr> shown() const;

private:
    class KIV_HIDDEN State;
    class KIV_HIDDEN MountCommand;
    class KIV_HIDDEN SceneObserver;

    const std::shared_ptr<State> _state;
};

/// The mounts of a run-time. `Content`, which must derive from `Mount`, is the class of the content
/// under one gateway.
///
///     struct Document : kit::Mount { ... };
///     kit::Mounts<Document> documents(registration.id(), ':');
///     documents.mount(std::make_shared<Document>(), gateway->path());
///
/// The run-time itself needs three lines in its hierarchy handler: `createItem(path)` looks into
/// `documents.at(path)` for `path.segment(path.nbSegments() - 1)`, `rootItems(gateway)` returns the
/// root of `documents.find(gateway)`, and the `parent()` of such a root is
/// `Hierarchy::createItem(path.popSegment())`.
template <class Content>
class Mounts : public MountTable
{
public:
    using MountTable::MountTable;

    /// The content under `gateway`; null if there is none.
    [[nodiscard]] std::shared_ptr<Content> find(const Path& gateway) const
    {
        return std::static_pointer_cast<Content>(MountTable::find(gateway));
    }

    /// The content that an item at `path` would belong to: the one under the path without its last
    /// segment, if that segment has this run-time and its separator; otherwise null.
    [[nodiscard]] std::shared_ptr<Content> at(const Path& path) const
    {
        return std::static_pointer_cast<Content>(MountTable::at(path));
    }

    /// A handler that lets hosts show files in `mounts`: files with one of the suffixes, such as
    /// ".notes", from which `read` makes what is shown under one gateway. `read` must throw
    /// `std::runtime_error` with the reason if it cannot, and is called once for each gateway.
    ///
    ///     RunTimeMgr::instance().setSceneFileHandler(
    ///         id, kit::Mounts<Notes>::sceneFileHandler(notes, {".notes"}, readNotes));
    [[nodiscard]] static SceneFileHandler::Ptr
    sceneFileHandler(const std::shared_ptr<Mounts>& mounts, std::vector<std::string> suffixes,
                     std::function<std::shared_ptr<Content>(const std::string& file)> read)
    {
        return fileHandler(mounts, std::move(suffixes), std::move(read));
    }

    /// Calls `visit(content)` for all shown mounts; gateways before those under them.
    template <class Visit>
    void forEach(Visit visit) const
    {
        for (const auto& mount : shown()) {
            visit(static_cast<Content&>(*mount));
        }
    }
};

} // namespace Kiv_v4::kit
