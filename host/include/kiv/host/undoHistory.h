#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/undoableCommandMgr.h"

/// Ready-made services for hosts.
namespace Kiv_v4::host {

/// A command manager with a linear history, for hosts that have no undo system of their own.
///
///     const auto history = std::make_shared<host::UndoHistory>();
///     UndoableCommandMgr::initializeInstance(history);
///     UndoableCommandMgr::instance().executeCmd(command);
///     history->undo();
///
/// A new entry drops what was undone and could be redone; beyond the limit, the oldest entries are
/// dropped. An `UndoableCommandGuard` that succeeds becomes one entry.
///
/// **Reentrancy.** A command that is running must not call `undo`, `redo` or `clear`:
/// `std::logic_error`. What it executes or registers through the installed manager is its own
/// business and becomes no entry.
class KIV_EXPORT UndoHistory : public UndoableCommandMgr
{
public:
    /// The limit of a history that is made without one.
    static constexpr std::size_t kDefaultLimit = 1000;

    /// `limit` is the largest number of entries, at least 1; throws `std::invalid_argument` for 0.
    explicit UndoHistory(std::size_t limit = kDefaultLimit);
    ~UndoHistory() override;

    /// Executes `command` and enters it. When it throws, the history stays as it was; what the
    /// command did before stays done.
    void executeCmd(const UndoableCommand::Ptr& command) const override;

    /// Enters a command that was executed already.
    void registerCmd(const UndoableCommand::Ptr& command) const override;

    /// Whether `undo`, or `redo`, has something to do.
    [[nodiscard]] bool canUndo() const noexcept;
    [[nodiscard]] bool canRedo() const noexcept;

    /// Undoes the last entry that is done; false when there is none. When the command throws, the
    /// entry still counts as done, though part of it may have been undone.
    bool undo();

    /// Redoes the first entry that is undone; false when there is none. When the command throws,
    /// the entry still counts as undone, though part of it may have been redone.
    bool redo();

    /// The entries' texts (`UndoableCommand::commandString`), oldest first, those that are undone
    /// last.
    [[nodiscard]] std::vector<std::string> entries() const;

    /// How many of the entries are done; the others can be redone.
    [[nodiscard]] std::size_t nbDone() const noexcept;

    /// Forgets all entries.
    void clear();

    /// The largest number of entries.
    [[nodiscard]] std::size_t limit() const noexcept;

    /// Drops the oldest entries, then those that could be redone, until `limit` are left. Throws
    /// `std::invalid_argument` for 0.
    void setLimit(std::size_t limit);

private:
    struct State;

    const std::unique_ptr<State> _state;
};

} // namespace Kiv_v4::host
