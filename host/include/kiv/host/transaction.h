#pragma once

#include <memory>
#include <string>

#include "kiv/compositeUndoableCommand.h"
#include "kiv/export.h"

namespace Kiv_v4::host {

/// Several edits as one undo step that is done as a whole or not at all: without `commit`, the
/// destructor undoes the commands, last first.
///
///     host::Transaction edits("rm cube");
///     edits.run(deselectCmd);
///     edits.run(operations->deleteItemCmd()); // throws when the run-time refuses
///     edits.commit();                         // one entry of the undo history
///
/// **What belongs to it.** The commands given to `run`; and, if the installed manager is an
/// `UndoHistory`, the commands that any code executes or registers through it meanwhile, so that
/// you can call code that does not know the transaction. Commands that another command executes
/// while it runs do not belong to it.
///
/// **Nesting.** A transaction that commits inside another one becomes part of it. A command guard
/// inside a transaction passes its commands to the transaction if it succeeds. Under an older
/// command guard, use `run`: commands executed through the manager belong to the guard.
///
/// **Errors.** If a command throws, the transaction stays as it was before: continue, or let it
/// end. The commands of a plain `CompositeUndoableCommand` run one by one, so that if one throws,
/// the earlier ones are undone, too. An exception from an undo is written to the log, and the
/// earlier commands are still undone.
///
/// **Threads.** Use transactions on the host's main thread.
class KIV_EXPORT Transaction
{
public:
    /// `name` is the text for undo menus.
    explicit Transaction(std::string name);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Rolls back unless `commit` or `rollBack` ended the transaction.
    ~Transaction();

    /// Executes the command. Throws `std::runtime_error` if it is null, which is how a run-time
    /// refuses, and `std::logic_error` if the transaction has ended; exceptions of the command pass
    /// through.
    void run(const UndoableCommand::Ptr& command);

    /// The same, and returns the command, which may have a result.
    template <class Command>
    std::shared_ptr<Command> runFor(std::shared_ptr<Command> command)
    {
        run(command);
        return command;
    }

    /// Passes the commands as one to the enclosing transaction or, if there is none, to the command
    /// manager, which must be installed, and ends the transaction. Passes nothing if there are no
    /// commands. If the manager throws, the transaction continues. Throws `std::logic_error` if the
    /// transaction has ended.
    void commit();

    /// Undoes the commands, last first, and ends the transaction. Does nothing if it has ended.
    void rollBack() noexcept;

    /// Whether the transaction has not ended.
    [[nodiscard]] bool isOpen() const noexcept { return _isOpen; }

    /// Whether no command has run so far.
    [[nodiscard]] bool empty() const noexcept { return _done.empty(); }

private:
    friend class UndoHistory;

    struct KIV_HIDDEN Chain;

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
