#pragma once

#include <memory>

#include "kiv/uiNodeGraphNode.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// Every item can be placed in a node editor and given a size there.
[[nodiscard]] UINodeGraphNodeHandler::Ptr
makeUINodeGraphNodeHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
