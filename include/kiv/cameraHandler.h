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
    [[nodiscard]] static Selection find(Path const& path);

    /// The same across run-times: after the cameras of the run-time those of each gateway under
    /// `path`, gateway by gateway, each camera once. Exceptions of the run-times pass through.
    [[nodiscard]] static Selection findAll(Path const& path);

    CameraHandler();
    CameraHandler(const CameraHandler&) = delete;
    CameraHandler& operator=(const CameraHandler&) = delete;
    virtual ~CameraHandler();

    /// The camera at `item`; null when it is no camera.
    [[nodiscard]] virtual Camera::Ptr camera(SceneItem::Ptr const& item) = 0;

    /// The camera items of this run-time at or under `path`, in the order of the hierarchy. When
    /// `path` is a gateway, also those that lie behind it: what `findAll` gives for each of the
    /// items with which the nested run-time begins there.
    [[nodiscard]] virtual Selection findCameras(Path const& path) = 0;
};

} // namespace Kiv_v4
