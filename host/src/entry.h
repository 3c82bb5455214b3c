#pragma once

#include <functional>

#include "kiv/undoableCommand.h"

namespace Kiv_v4::host::detail {

// What an undo history does with the commands of its entries.

/// Whether it is null or a composite in which there is no command.
[[nodiscard]] bool doesNothing(const UndoableCommand::Ptr& command);

/// What is left of a command without the parts that `goes` is true of: itself, a step of what is
/// left, or null.
[[nodiscard]] UndoableCommand::Ptr without(const UndoableCommand::Ptr& command,
                                           const std::function<bool(const UndoableCommand&)>& goes);

/// One command for two value edits of the same target, which were executed one after the other;
/// null when they are not.
[[nodiscard]] UndoableCommand::Ptr merged(const UndoableCommand::Ptr& first,
                                          const UndoableCommand::Ptr& next);

} // namespace Kiv_v4::host::detail
