#pragma once

#include <memory>

#include "kiv/cameraHandler.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// Items of node type "camera" are cameras.
[[nodiscard]] CameraHandler::Ptr makeCameraHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
