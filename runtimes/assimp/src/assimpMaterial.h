#pragma once

#include <memory>

#include "kiv/material.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// The nodes with meshes have materials.
[[nodiscard]] MaterialHandler::Ptr makeMaterialHandler(const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
