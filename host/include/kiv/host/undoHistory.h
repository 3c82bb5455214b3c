#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/rtid.h"
#include "kiv/subject.h"
#include "kiv/undoableCommandMgr.h"

/// Ready-made services for hosts.
namespace Kiv_v4::host {

/// A command manager with a linear history, for hosts that have no undo system of their own.
///
///     const auto history = std::make_shared<host::UndoHistory>();
///     UndoableCommandMgr::initializeInstance(history);
///     history->addObserver(editMenu);                    // gets an UndoHistoryChanged
///     UndoableCommandMgr::instance().executeCmd(command);
///     history->undo();
///
/// A new entry drops the entries that could be redone; beyond the limit, the oldest entries are
/// dropped. An `UndoableCommandGuard` that succeeds becomes one entry, as does a `Transaction`;
/// commands executed or registered while a transaction is open become part of it. A composite
/// without commands makes no entry and drops nothing.
///
/// **Observers** are notified of each change once it is complete, and may use the history.
///
/// **Reentrancy.** A running command must not undo, redo or drop entries; the history throws
/// `std::logic_error`. Commands that it executes or registers through the installed manager make no
/// entries.
class KIV_EXPORT UndoHistory : public UndoableCommandMgr, public Subject
{
public:
    /// The default limit.
    static constexpr std::size_t kDefaultLimit = 1000;

    /// `limit` is the largest number of entries. Throws `std::invalid_argument` if it is 0.
    explicit UndoHistory(std::size_t limit = kDefaultLimit);
    ~UndoHistory() override;

    /// Executes `command` and enters it. If it throws, the history stays as it was; the command's
    /// effects until then stay.
    void executeCmd(const UndoableCommand::Ptr& command) const override;

    /// Enters a command that was executed already.
    void registerCmd(const UndoableCommand::Ptr& command) const override;

    /// Whether `undo`, or `redo`, has something to do.
    [[nodiscard]] bool canUndo() const noexcept;
    [[nodiscard]] bool canRedo() const noexcept;

    /// The text (`UndoableCommand::commandString`) of the entry that `undo`, or `redo`, would use;
    /// empty if there is none.
    [[nodiscard]] std::string undoText() const;
    [[nodiscard]] std::string redoText() const;

    /// Undoes the last entry that is done. Returns false if there is none. If the command throws,
    /// the entry still counts as done, though part of it may have been undone.
    bool undo();

    /// Redoes the first entry that is undone. Returns false if there is none. If the command
    /// throws, the entry still counts as undone, though part of it may have been redone.
    bool redo();

    /// Drops the entry that `undo`, or `redo`, would use, without changing the scene, to continue
    /// after its command threw. Returns false if there is none.
    bool skipUndo();
    bool skipRedo();

    /// The entries' texts, oldest first, those that are undone last.
    [[nodiscard]] std::vector<std::string> entries() const;

    /// The number of entries that are done; the others can be redone.
    [[nodiscard]] std::size_t nbDone() const noexcept;

    /// Whether the scene is as it was at the last `setClean`, or when the history was made: for the
    /// title of a window. After an edit whose entry was dropped, undo cannot make it clean again.
    [[nodiscard]] bool isClean() const noexcept;

    /// Marks the present state of the scene as clean, for example after saving.
    void setClean();

    /// While it lives, consecutive value edits of the same target become one entry: for drags that
    /// execute a new command for each movement of the mouse. The target is the same if both
    /// commands are of one class derived from `BaseUndoableCommand` with the same path and text, or
    /// are composites of equally many commands with pairwise the same targets. The entry keeps the
    /// first and the last edit only. Earlier entries are not merged, and the clean state is never
    /// merged away.
    class KIV_EXPORT Merging
    {
    public:
        explicit Merging(UndoHistory& history);
        Merging(const Merging&) = delete;
        Merging& operator=(const Merging&) = delete;
        ~Merging();

    private:
        const std::shared_ptr<int> _depth; ///< Shared with the history, which may go first.
    };

    /// Drops the commands for which `concerns` returns true and returns the number of entries that
    /// changed. Calls `concerns` for a composite first, then for each of its commands; an entry
    /// keeps the remaining commands and its text.
    std::size_t drop(const std::function<bool(const UndoableCommand&)>& concerns);

    /// Drops the commands of a run-time that will be unregistered: those whose path leads through
    /// it (`BaseUndoableCommand`) and those that belong to it (`RunTimeCommand`). Returns the
    /// number of entries that changed.
    std::size_t dropRunTime(Rtid runTimeId);

    /// Drops all entries.
    void clear();

    /// The largest number of entries.
    [[nodiscard]] std::size_t limit() const noexcept;

    /// Drops the oldest entries, then those that could be redone, until `limit` are left. Throws
    /// `std::invalid_argument` if `limit` is 0.
    void setLimit(std::size_t limit);

private:
    struct KIV_HIDDEN State;

    const std::unique_ptr<State> _state;
};

/// The entries of an `UndoHistory`, or whether it is clean, changed.
class KIV_EXPORT UndoHistoryChanged : public Notification
{
public:
    /// The kind of change.
    enum Change : std::uint8_t {
        Entered, ///< A new entry; those that could be redone were dropped.
        Merged,  ///< Another edit was merged into the last entry.
        Undone,
        Redone,
        Dropped, ///< Entries, or commands in them, were dropped.
        Cleaned  ///< `setClean` was called.
    };

    explicit UndoHistoryChanged(Change change);
    ~UndoHistoryChanged() override;

    /// The kind of change.
    [[nodiscard]] Change change() const noexcept { return _change; }

private:
    const Change _change;
};

} // namespace Kiv_v4::host
