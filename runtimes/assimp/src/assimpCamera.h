#pragma once

#include <memory>

#include "kiv/cameraHandler.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// Items with a camera of the file are cameras, whatever other objects they have.
[[nodiscard]] CameraHandler::Ptr makeCameraHandler(const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
