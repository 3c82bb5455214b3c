#pragma once

#include <memory>

#include "kiv/uiInfoHandler.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// Icons by node type, tooltips with the name in the file and the file.
[[nodiscard]] UIInfoHandler::Ptr makeUIInfoHandler(const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
