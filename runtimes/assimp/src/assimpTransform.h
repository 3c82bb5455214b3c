#pragma once

#include <memory>

#include "kiv/transform3dHandler.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// The matrix from the node's space to its parent's.
[[nodiscard]] Matrix4d matrixOf(const SceneFile& file, const Edits& edits, NodeIndex index);

/// Every item has a transform.
[[nodiscard]] Transform3dHandler::Ptr
makeTransform3dHandler(const std::shared_ptr<const Mounts>& mounts);

} // namespace Kiv_v4::assimp
