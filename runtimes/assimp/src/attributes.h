#pragma once

#include <memory>

#include "kiv/attributes.h"

#include "mounts.h"

namespace Kiv_v4::assimp {

/// The metadata of a node as attributes that are not to be edited, and the names of its materials.
[[nodiscard]] AttributesHandler::Ptr
makeAttributesHandler(const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
