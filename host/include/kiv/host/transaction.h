#pragma once

#include <memory>
#include <string>

#include "kiv/compositeUndoableCommand.h"
#include "kiv/export.h"

namespace Kiv_v4::host {

/// Several edits as one undo step that is done as a whole or not at all: unless `commit` is
/// reached, what was done is undone, last first, when the transaction ends.
///
///     host::Transaction edits("rm cube");
///     edits.run(deselectCmd);
///     edits.run(operations->deleteItemCmd()); // throws when the run-time refuses
///     edits.commit();                         // one entry of the undo history
///
/// **What belongs to it.** The commands given to `run`; and, when the installed manager is an
/// `UndoHistory`, what others execute or register through it meanwhile, so that code that knows
/// nothing of the transaction can be called. What a command does while it runs is its own business.
///
/// **Nesting.** A transaction that commits inside another one becomes part of it. A command guard
/// inside a transaction hands it what it gathered if it succeeds. Under a command guard that is
/// older, use `run`: what is executed through the manager there belongs to the guard.
///
/// **Errors.** A command that throws leaves the transaction as it was before: go on, or let it end.
/// A plain `CompositeUndoableCommand` is run command by command, so that what it did before one of
/// them threw is undone, too. An undo that throws is written to the log, and the earlier commands
/// are undone all the same.
///
/// **Threads.** Transactions belong to the host's main thread.
class KIV_EXPORT Transaction
{
public:
    /// `name` is what undo menus show.
    explicit Transaction(std::string name);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Rolls back unless that, or `commit`, was done.
    ~Transaction();

    /// Executes the command. Throws `std::runtime_error` for null, which is how a run-time refuses,
    /// and `std::logic_error` when the transaction is over; what the command throws passes through.
    void run(const UndoableCommand::Ptr& command);

    /// The same, giving the command, for the result it may tell.
    template <class Command>
    std::shared_ptr<Command> runFor(std::shared_ptr<Command> command)
    {
        run(command);
        return command;
    }

    /// Hands the commands as one to the enclosing transaction or else to the installed command
    /// manager, which must be there, and ends the transaction. Without commands there is nothing to
    /// hand over. When the manager throws, the transaction goes on. Throws `std::logic_error` when
    /// it is over.
    void commit();

    /// Undoes the commands, last first, and ends the transaction. Does nothing when it is over.
    void rollBack() noexcept;

    /// Whether it has neither committed nor rolled back.
    [[nodiscard]] bool isOpen() const noexcept { return _isOpen; }

    /// Whether nothing was done so far.
    [[nodiscard]] bool empty() const noexcept { return _done.empty(); }

private:
    friend class UndoHistory;

    struct Chain;

    KIV_HIDDEN static Chain& chain() noexcept;
    KIV_HIDDEN static Transaction* receiver() noexcept;
    KIV_HIDDEN void take(const UndoableCommand::Ptr& command);
    KIV_HIDDEN void requireOpen() const;
    KIV_HIDDEN void end() noexcept;

    const std::string _name;
    Transaction* _outer; ///< The one that was innermost before.
    CompositeUndoableCommand::Commands _done;
    bool _isOpen = true;
    bool _isRunning = false; ///< A command of its own.
};

} // namespace Kiv_v4::host
