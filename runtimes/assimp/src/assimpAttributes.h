#pragma once

#include <memory>

#include "kiv/attributes.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// The metadata of a node and the values of a material as read-only attributes.
[[nodiscard]] AttributesHandler::Ptr
makeAttributesHandler(const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
