#pragma once

#include <memory>

#include "kiv/lightHandler.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// Items with a light of the file are lights, whatever other objects they have.
[[nodiscard]] LightHandler::Ptr makeLightHandler(const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
