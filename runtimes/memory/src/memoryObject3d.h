#pragma once

#include <memory>

#include "kiv/object3d.h"
#include "kiv/path.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The node's own box, without what is under it.
[[nodiscard]] const BoundingBox3d& ownBoxOf(const Node& node) noexcept;

/// A command that sets the item's own box. Null when a number of the box is infinite or none, but
/// for an empty box, or when there is no item.
[[nodiscard]] UndoableCommand::Ptr ownBoxCmd(const std::shared_ptr<Tree>& tree, const Path& item,
                                             const BoundingBox3d& box);

/// Every item is an object.
[[nodiscard]] Object3dHandler::Ptr makeObject3dHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
