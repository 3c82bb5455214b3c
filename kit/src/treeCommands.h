#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kiv/kit/tree.h"
#include "kiv/resultCommands.h"

namespace Kiv_v4::kit {

// Commands that edit a tree, with undo and announcements. Their makers must first check that the
// tree allows the edit.

/// Adds the result of `make`, under a free name made of `name`, as the last child.
[[nodiscard]] SceneItemResultUndoableCommand::Ptr addCmd(Tree::Ptr tree, const Path& parent,
                                                         const std::string& name,
                                                         const std::string& text,
                                                         std::function<Tree::Part()> make);

[[nodiscard]] UndoableCommand::Ptr removeCmd(Tree::Ptr tree, const Path& path);

[[nodiscard]] SceneItemResultUndoableCommand::Ptr renameCmd(Tree::Ptr tree, const Path& path,
                                                            const std::string& name);

/// Moves the item under `parent` to before its child `before`, or last if that is empty.
[[nodiscard]] InsertChildCommand::Ptr moveCmd(Tree::Ptr tree, const Path& path, const Path& parent,
                                              const std::string& before);

[[nodiscard]] UndoableCommand::Ptr reorderCmd(Tree::Ptr tree, const Path& parent,
                                              std::vector<std::string> names);

/// The child's row; `Tree::kLast` if there is none of that name.
[[nodiscard]] std::size_t rowOf(const Tree& tree, const Path& parent, const std::string& name);

} // namespace Kiv_v4::kit
