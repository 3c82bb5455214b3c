#pragma once

#include <memory>

#include "kiv/transform3dHandler.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The matrix from the node's space to its parent's.
[[nodiscard]] Matrix4d matrixOf(const Node& node) noexcept;

/// Every item has a transform.
[[nodiscard]] Transform3dHandler::Ptr makeTransform3dHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
