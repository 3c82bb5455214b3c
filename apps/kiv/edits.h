#pragma once

#include <memory>
#include <string>

#include "kiv/compositeUndoableCommand.h"

namespace app {

/// Several commands as one undo step that is done as a whole or not at all: what was run is undone,
/// last first, unless `commit` was reached.
///
///     Edits edits("rm cube");
///     edits.run(deselectCmd);
///     edits.run(operations->deleteItemCmd()); // throws when the run-time refuses
///     edits.commit();                         // one entry of the undo history
class Edits
{
public:
    /// `name` is what the undo history shows.
    explicit Edits(std::string name);
    Edits(const Edits&) = delete;
    Edits& operator=(const Edits&) = delete;
    ~Edits();

    /// Executes the command. Throws `std::runtime_error` for null, which is how a run-time refuses;
    /// what the command throws passes through.
    void run(const Kiv_v4::UndoableCommand::Ptr& command);

    /// The same, giving the command, for the result it may tell.
    template <class Command>
    std::shared_ptr<Command> runFor(std::shared_ptr<Command> command)
    {
        run(command);
        return command;
    }

    /// Hands the commands to the installed command manager as one. Without commands there is
    /// nothing to hand over.
    void commit();

private:
    const std::string _name;
    Kiv_v4::CompositeUndoableCommand::Commands _done;
};

} // namespace app
