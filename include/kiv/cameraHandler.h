#pragma once

#include <memory>

#include "kiv/camera.h"
#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/selection.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make and find its cameras.
class KIV_EXPORT CameraHandler
{
public:
    using Ptr = std::shared_ptr<CameraHandler>;

    /// Returns the result of `findCameras(path)` of the run-time of `path`; an empty selection if
    /// the run-time has no camera handler.
    [[nodiscard]] static Selection find(const Path& path);

    /// The same across run-times: first the cameras of the run-time of `path`, then, if `path` is a
    /// gateway, those behind it, and then those behind each gateway under it, gateway by gateway,
    /// each camera once. Behind a gateway lie its children of other run-times.
    ///
    /// Exceptions of the run-time of `path` pass through. An exception from behind a gateway is
    /// written to the log, and the search continues without the rest of what lies there.
    [[nodiscard]] static Selection findAll(const Path& path);

    CameraHandler();
    CameraHandler(const CameraHandler&) = delete;
    CameraHandler& operator=(const CameraHandler&) = delete;
    virtual ~CameraHandler();

    /// The camera at `item`; null if it is not a camera.
    [[nodiscard]] virtual Camera::Ptr camera(const SceneItem::Ptr& item) = 0;

    /// The camera items of this run-time at or under `path`, in the order of the hierarchy.
    /// `findAll` also finds those behind gateways.
    [[nodiscard]] virtual Selection findCameras(const Path& path) = 0;
};

} // namespace Kiv_v4
