#pragma once

#include <memory>

#include "kiv/nodeDef.h"

#include "tree.h"

namespace Kiv_v4::memory {

/// Describes the types of `nodeTypes()` and makes nodes of them.
[[nodiscard]] NodeDefHandler::Ptr makeNodeDefHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
