#pragma once

#include <memory>

#include "kiv/object3d.h"
#include "kiv/path.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The node's own box, without its descendants.
[[nodiscard]] const BoundingBox3d& ownBoxOf(const Node& node) noexcept;

/// A command that sets the item's own box. Null if a non-empty box contains NaN or infinity, or if
/// there is no item.
[[nodiscard]] UndoableCommand::Ptr ownBoxCmd(const std::shared_ptr<Tree>& tree, const Path& item,
                                             const BoundingBox3d& box);

/// Every item is an object.
[[nodiscard]] Object3dHandler::Ptr makeObject3dHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
