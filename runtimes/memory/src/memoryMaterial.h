#pragma once

#include <memory>
#include <vector>

#include "kiv/material.h"
#include "kiv/path.h"
#include "kiv/undoableCommand.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// A command that binds these materials to the item, each once, instead of those bound before.
/// Throws `std::invalid_argument` if a path names no item, or one that is not a material.
///
/// The item refers to the materials themselves, weakly: so it follows their renames and moves, and
/// has them again when their removal is undone.
[[nodiscard]] UndoableCommand::Ptr materialsCmd(const std::shared_ptr<Tree>& tree, const Path& item,
                                                const std::vector<Path>& materials);

/// Every item can have materials.
[[nodiscard]] MaterialHandler::Ptr makeMaterialHandler(const std::shared_ptr<Tree>& tree);

} // namespace Kiv_v4::memory
