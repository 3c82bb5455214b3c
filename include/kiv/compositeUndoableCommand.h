#pragma once

#include <initializer_list>
#include <list>
#include <memory>

#include "kiv/export.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// Several commands as one: executed and redone front to back, undone back to front. Null entries
/// are skipped.
///
/// An exception from a command passes through; the commands that ran stay as they are, and the
/// others do not run.
class KIV_EXPORT CompositeUndoableCommand : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<CompositeUndoableCommand>;
    /// Commands in the order of their execution; entries may be null.
    using Commands = std::list<UndoableCommand::Ptr>;

    CompositeUndoableCommand();
    CompositeUndoableCommand(std::initializer_list<UndoableCommand::Ptr> commands);
    explicit CompositeUndoableCommand(const Commands& commands);
    ~CompositeUndoableCommand() override;

    /// A new composite of `commands`.
    [[nodiscard]] static Ptr create(std::initializer_list<UndoableCommand::Ptr> commands);

    /// Adds `command`, null or not, at the end. It is not executed.
    void append(const UndoableCommand::Ptr& command);

    /// All entries, null ones included.
    [[nodiscard]] const Commands& cmdsList() const noexcept { return _commands; }

    void execute() override;
    void undo() override;
    void redo() override;

protected:
    /// Moves all of `commands` to the end, without an allocation: callers that must not fail after
    /// a command has run make the list before.
    void take(Commands& commands) noexcept { _commands.splice(_commands.end(), commands); }

private:
    Commands _commands;
};

} // namespace Kiv_v4
