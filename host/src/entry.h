#pragma once

#include <functional>

#include "kiv/undoableCommand.h"

namespace Kiv_v4::host::detail {

// The operations of an undo history on the commands of its entries.

/// Whether the command is null or a composite without commands.
[[nodiscard]] bool doesNothing(const UndoableCommand::Ptr& command);

/// Returns the rest of a command without the parts for which `goes` is true: itself, a composite of
/// the rest, or null.
[[nodiscard]] UndoableCommand::Ptr without(const UndoableCommand::Ptr& command,
                                           const std::function<bool(const UndoableCommand&)>& goes);

/// Returns one command for two value edits of the same target that were executed one after the
/// other; null if they are not such edits.
[[nodiscard]] UndoableCommand::Ptr merged(const UndoableCommand::Ptr& first,
                                          const UndoableCommand::Ptr& next);

} // namespace Kiv_v4::host::detail
