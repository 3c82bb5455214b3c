#pragma once

#include <memory>

#include "kiv/object3d.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// Every item is an object.
[[nodiscard]] Object3dHandler::Ptr makeObject3dHandler(const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
