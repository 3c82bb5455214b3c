#pragma once

#include <memory>

#include "kiv/camera.h"
#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/selection.h"

namespace Kiv_v4 {

/// What a run-time installs to make and find its cameras.
class KIV_EXPORT CameraHandler
{
public:
    using Ptr = std::shared_ptr<CameraHandler>;

    /// What `findCameras` gives for `path` in the run-time of `path`; none when that has no camera
    /// handler.
    [[nodiscard]] static Selection find(const Path& path);

    /// The same across run-times: after the cameras of the run-time of `path` those behind it, when
    /// it is a gateway, and then those of each gateway under it, gateway by gateway, each camera
    /// once. Behind a gateway lie its children of other run-times.
    ///
    /// What the run-time of `path` throws passes through. What is thrown behind a gateway is
    /// written to the log, and the search goes on without the rest of what lies there.
    [[nodiscard]] static Selection findAll(const Path& path);

    CameraHandler();
    CameraHandler(const CameraHandler&) = delete;
    CameraHandler& operator=(const CameraHandler&) = delete;
    virtual ~CameraHandler();

    /// The camera at `item`; null when it is no camera.
    [[nodiscard]] virtual Camera::Ptr camera(const SceneItem::Ptr& item) = 0;

    /// The camera items of this run-time at or under `path`, in the order of the hierarchy. Those
    /// behind gateways are found by `findAll`.
    [[nodiscard]] virtual Selection findCameras(const Path& path) = 0;
};

} // namespace Kiv_v4
