#pragma once

#include <memory>

#include "kiv/lightHandler.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// Items of the node types of lights are lights, of the kind of their type.
[[nodiscard]] LightHandler::Ptr makeLightHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
