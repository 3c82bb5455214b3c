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
///     history->addObserver(editMenu);                    // hears of an UndoHistoryChanged
///     UndoableCommandMgr::instance().executeCmd(command);
///     history->undo();
///
/// A new entry drops what was undone and could be redone; beyond the limit, the oldest entries are
/// dropped. An `UndoableCommandGuard` that succeeds becomes one entry, as does a `Transaction`;
/// what is executed or registered while a transaction is open becomes part of it. A composite in
/// which there is no command makes no entry and drops nothing.
///
/// **Observers** hear of each change once it is complete, and may use the history.
///
/// **Reentrancy.** A command that is running must not undo, redo or drop entries:
/// `std::logic_error`. What it executes or registers through the installed manager is its own
/// business and becomes no entry.
class KIV_EXPORT UndoHistory : public UndoableCommandMgr, public Subject
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

    /// The text (`UndoableCommand::commandString`) of the entry that `undo`, or `redo`, is about;
    /// empty when there is none.
    [[nodiscard]] std::string undoText() const;
    [[nodiscard]] std::string redoText() const;

    /// Undoes the last entry that is done; false when there is none. When the command throws, the
    /// entry still counts as done, though part of it may have been undone.
    bool undo();

    /// Redoes the first entry that is undone; false when there is none. When the command throws,
    /// the entry still counts as undone, though part of it may have been redone.
    bool redo();

    /// Forgets the entry that `undo`, or `redo`, is about, with the scene as it is: the way on when
    /// its command throws. False when there is none.
    bool skipUndo();
    bool skipRedo();

    /// The entries' texts, oldest first, those that are undone last.
    [[nodiscard]] std::vector<std::string> entries() const;

    /// How many of the entries are done; the others can be redone.
    [[nodiscard]] std::size_t nbDone() const noexcept;

    /// Whether the scene is as it was when `setClean` was called last, or the history was made: for
    /// the title of a window. An edit that cannot be undone any more because its entry was dropped
    /// keeps it from becoming clean again.
    [[nodiscard]] bool isClean() const noexcept;

    /// Takes the scene for clean as it is now: it was saved.
    void setClean();

    /// While it lives, consecutive value edits of the same target become one entry, as a drag does
    /// that executes a new command for each movement of the mouse. The target is the same when both
    /// commands are of one class derived from `BaseUndoableCommand` with the same path and text,
    /// or are composites of as many commands that are so, one by one. What lies between the first
    /// and the last of the edits is forgotten. Edits from before are left alone, and the clean
    /// state is never merged away.
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

    /// Forgets the commands that `concerns` is true of and gives the number of entries that
    /// changed. A composite is asked about first, then each of its commands; an entry keeps those
    /// that stay, under its text.
    std::size_t drop(const std::function<bool(const UndoableCommand&)>& concerns);

    /// Forgets the commands of a run-time that leaves: those whose path leads through it
    /// (`BaseUndoableCommand`) and those that say so (`RunTimeCommand`).
    std::size_t dropRunTime(Rtid runTimeId);

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

/// The entries of an `UndoHistory`, or whether it is clean, changed: ask it.
class KIV_EXPORT UndoHistoryChanged : public Notification
{
public:
    /// What happened.
    enum Change : std::uint8_t {
        Entered, ///< An entry is new; those that could be redone are gone.
        Merged,  ///< The last entry took another edit in.
        Undone,
        Redone,
        Dropped, ///< Entries, or commands in them, are forgotten.
        Cleaned  ///< `setClean` was called.
    };

    explicit UndoHistoryChanged(Change change);
    ~UndoHistoryChanged() override;

    /// What happened.
    [[nodiscard]] Change change() const noexcept { return _change; }

private:
    const Change _change;
};

} // namespace Kiv_v4::host
