#pragma once

#include <memory>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4 {

/// One edit that the host's undo system executes, undoes and redoes. Operations with the suffix
/// `Cmd` make commands and change nothing; the change happens in `execute`.
///
/// **Lifetime.** Commands outlive the items that they act on: they remember paths, not item
/// objects.
class KIV_EXPORT UndoableCommand
{
public:
    using Ptr = std::shared_ptr<UndoableCommand>;

    UndoableCommand();
    UndoableCommand(const UndoableCommand&) = delete;
    UndoableCommand& operator=(const UndoableCommand&) = delete;
    virtual ~UndoableCommand();

    /// The text for an undo menu. By default empty.
    [[nodiscard]] virtual std::string commandString() const;

    /// Does the edit for the first time. By default calls `redo()`, so that most commands need only
    /// `undo` and `redo`.
    virtual void execute();

    /// Takes the edit back. Clients must only call it after `execute` or `redo`.
    virtual void undo() = 0;

    /// Does the edit again. Clients must only call it after `undo`.
    virtual void redo() = 0;
};

} // namespace Kiv_v4
