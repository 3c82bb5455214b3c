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

    /// What an undo menu shows. By default empty.
    [[nodiscard]] virtual std::string commandString() const;

    /// Does the edit for the first time. By default `redo()`, so that a command whose first run is
    /// like any other needs only `undo` and `redo`.
    virtual void execute();

    /// Takes the edit back. Called only when it is done.
    virtual void undo() = 0;

    /// Does the edit again. Called only when it is undone.
    virtual void redo() = 0;
};

} // namespace Kiv_v4
