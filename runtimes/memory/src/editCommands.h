#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/resultCommands.h"
#include "kiv/sceneItem.h"

#include "memoryTree.h"
#include "steps.h"

namespace Kiv_v4::memory {

// Makers of the structural edits. They change nothing and return null if the scene, as it is now,
// does not allow the edit.

using TreePtr = std::shared_ptr<Tree>;

[[nodiscard]] SceneItemResultUndoableCommand::Ptr createChildCmd(const TreePtr& tree,
                                                                 const Path& parent,
                                                                 const std::string& nodeType,
                                                                 const PathComponent& name);
[[nodiscard]] UndoableCommand::Ptr createChildrenCmd(const TreePtr& tree, const Path& parent,
                                                     const std::string& nodeType,
                                                     const std::vector<PathComponent>& names);
[[nodiscard]] InsertChildCommand::Ptr insertChildCmd(const TreePtr& tree, const Path& parent,
                                                     const SceneItem::Ptr& child,
                                                     const SceneItem::Ptr& before);
[[nodiscard]] SceneItemResultUndoableCommand::Ptr createGroupCmd(const TreePtr& tree,
                                                                 const Path& parent,
                                                                 const SceneItemList& members,
                                                                 const PathComponent& name);
[[nodiscard]] UndoableCommand::Ptr reorderCmd(const TreePtr& tree, const Path& parent,
                                              const SceneItemList& orderedList);
[[nodiscard]] UndoableCommand::Ptr ungroupCmd(const TreePtr& tree, const Path& group);
[[nodiscard]] UndoableCommand::Ptr deleteItemCmd(const TreePtr& tree, const Path& item);
[[nodiscard]] SceneItemResultUndoableCommand::Ptr duplicateItemCmd(const TreePtr& tree,
                                                                   const Path& item);
[[nodiscard]] SceneItemResultUndoableCommand::Ptr
renameItemCmd(const TreePtr& tree, const Path& item, const PathComponent& newName);

/// Duplicates one item and returns the path of the copy.
Path duplicate(const TreePtr& tree, const Path& item, ChangeLog& log);

/// The name that the item gets when it is renamed to `name`; null for the root and if there is no
/// item.
[[nodiscard]] PathComponent validNameFor(Tree& tree, const Path& item, const PathComponent& name);

} // namespace Kiv_v4::memory
