#pragma once

#include <memory>

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// Installs the handlers for single items: transforms, cameras, lights, objects, materials, node
/// definitions, nodes of a node editor, and looks in a user interface.
void installItemInterfaces(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
