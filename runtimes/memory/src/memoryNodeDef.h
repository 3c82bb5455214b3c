#pragma once

#include <memory>
#include <string>

#include "kiv/nodeDef.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The attribute of that name, an input or an output, that new nodes of the type have; null if
/// there is none.
[[nodiscard]] AttributeDef::Ptr attributeOfType(const std::string& nodeType,
                                                const std::string& name);

/// Describes the types of `nodeTypes()` and makes nodes of them.
[[nodiscard]] NodeDefHandler::Ptr makeNodeDefHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
