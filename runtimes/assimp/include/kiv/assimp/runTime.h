#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "kiv/assimp/sceneFile.h"
#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::assimp {

class GatewayObserver;
class Mounts;

/// Scene files as a run-time: the constructor registers name, handlers and component separator, the
/// destructor takes all of it back. Files are mounted under gateway items of other run-times; the
/// file's root node is the first component of the segment.
///
///     assimp::RunTime files;
///     const auto file = assimp::read("scene.gltf");               // throws, with nothing changed
///     const auto gateway = model.make(model.root(), "gateway", "scene");
///     model.setGateway(gateway->path(), files.id());
///     const auto root = files.mount(file, gateway->path());       // /world/scene,:Scene
///
/// The component of an item is the node's name in the file, changed where it must be to be unique
/// among its siblings and free of separators and control characters; `originalName` gives the
/// file's own.
///
/// With a scene installed (`Scene::initializeInstance`), mounting and unmounting are announced as
/// one `SubtreeInvalidate` of the gateway, and mounts follow gateways that the scene reports as
/// renamed or reparented, from the scene that was installed when the file was mounted. A gateway
/// that is deleted keeps its mount, so that undoing the deletion brings everything back; `unmount`
/// lets go of it.
///
/// **Node types.** `mesh`, `camera` or `light` for what hangs at the node (in this order when there
/// are several), otherwise `transform`.
class KIV_EXPORT RunTime
{
public:
    /// The character that components are written with.
    static constexpr char kSeparator = ':';

    /// Throws `InvalidRunTimeName` when the name is registered already.
    explicit RunTime(const std::string& name = "assimp");
    RunTime(const RunTime&) = delete;
    RunTime& operator=(const RunTime&) = delete;
    ~RunTime();

    [[nodiscard]] Rtid id() const noexcept;

    /// Shows `file` under the gateway and gives its root item. Throws `std::invalid_argument`, with
    /// the gateway's path in the message, for a null file, an empty path and when a file is mounted
    /// there already.
    SceneItem::Ptr mount(const std::shared_ptr<const SceneFile>& file, const Path& gateway);

    /// Takes the file under the gateway away; false when there is none.
    bool unmount(const Path& gateway);

    /// Follows a gateway that was renamed or moved while no scene was installed; false when no file
    /// is mounted at `gateway`. Throws as `mount` does when the file cannot be mounted at
    /// `newGateway`.
    bool moveMount(const Path& gateway, const Path& newGateway);

    /// The number of items of the file under the gateway; 0 when there is none.
    [[nodiscard]] std::size_t nbItems(const Path& gateway) const;

    /// The name that the item's node has in its file, any bytes. Throws `std::invalid_argument`
    /// with the path in the message when there is no such item.
    [[nodiscard]] std::string originalName(const Path& item) const;

private:
    const RunTimeRegistration _registration;
    const std::shared_ptr<Mounts> _mounts;
    const std::shared_ptr<GatewayObserver> _gatewayObserver;
};

} // namespace Kiv_v4::assimp
