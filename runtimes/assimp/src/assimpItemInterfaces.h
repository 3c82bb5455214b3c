#pragma once

#include <memory>

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// Installs the handlers for single items: transforms, cameras, lights, objects, materials,
/// attributes and looks in a user interface.
void installItemInterfaces(Rtid runTimeId, const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
