#pragma once

#include <memory>

#include "kiv/uiInfoHandler.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// Icons are named after node types; gateways are written in italics.
[[nodiscard]] UIInfoHandler::Ptr makeUIInfoHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
