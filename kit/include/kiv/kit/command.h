#pragma once

#include <functional>
#include <string>

#include "kiv/export.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::kit {

// Commands from functions, for edits that need no class of their own. Each tells the run-time that
// it belongs to, and bears `text` for the undo menu. The functions remember paths, not items or
// pointers to data, since both may be gone and made again between undo and redo; what they throw
// leaves the data as they were and passes through. `announce`, when it is not empty, runs after
// every change that did not throw.

/// A command that does `redo`, also at its first run, and takes it back with `undo`.
[[nodiscard]] KIV_EXPORT UndoableCommand::Ptr command(Rtid runTimeId, std::string text,
                                                      std::function<void()> redo,
                                                      std::function<void()> undo,
                                                      std::function<void()> announce = {});

/// The same with an item as the result: `item` makes it anew whenever it is asked for, once the
/// command has run.
[[nodiscard]] KIV_EXPORT SceneItemResultUndoableCommand::Ptr
itemCommand(Rtid runTimeId, std::string text, std::function<void()> redo,
            std::function<void()> undo, std::function<SceneItem::Ptr()> item,
            std::function<void()> announce = {});

} // namespace Kiv_v4::kit
