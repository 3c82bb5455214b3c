#pragma once

#include <functional>
#include <string>

#include "kiv/export.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::kit {

// Commands from functions, for edits that need no class of their own. Each belongs to the run-time
// `runTimeId` (`RunTimeCommand`) and has `text` for the undo menu. The functions must remember
// paths, not items or pointers to data, since both may be destroyed and made again between undo and
// redo; a function that throws must leave the data unchanged, and the exception passes through.
// `announce`, if it is not empty, runs after every change that did not throw; its own exceptions go
// to the log.

/// Returns a command that calls `redo`, also at its first run, and `undo`.
[[nodiscard]] KIV_EXPORT UndoableCommand::Ptr command(Rtid runTimeId, std::string text,
                                                      std::function<void()> redo,
                                                      std::function<void()> undo,
                                                      std::function<void()> announce = {});

/// The same with an item as the result: once the command has run, each call of `sceneItem` makes it
/// with `item`.
[[nodiscard]] KIV_EXPORT SceneItemResultUndoableCommand::Ptr
itemCommand(Rtid runTimeId, std::string text, std::function<void()> redo,
            std::function<void()> undo, std::function<SceneItem::Ptr()> item,
            std::function<void()> announce = {});

} // namespace Kiv_v4::kit
