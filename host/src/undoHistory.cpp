#include "kiv/host/undoHistory.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <optional>
#include <stdexcept>
#include <utility>

#include "kiv/baseUndoableCommand.h"
#include "kiv/host/transaction.h"
#include "kiv/runTimeCommand.h"

#include "entry.h"
#include "scopedFlag.h"

namespace Kiv_v4::host {

using detail::ScopedFlag;
using Entries = std::list<UndoableCommand::Ptr>;

struct UndoHistory::State
{
    explicit State(UndoHistory& history) : owner(history) {}

    UndoHistory& owner;
    Entries done;
    Entries undone; ///< Can be redone, the first one first.
    std::size_t limit = kDefaultLimit;
    bool running = false;
    std::optional<std::size_t> clean = 0; ///< The number of done entries in the clean state.
    const std::shared_ptr<int> merging =
        std::make_shared<int>(0); ///< The number of living `Merging`.
    bool mayMerge = false;        ///< Whether the last entry was made under the same `Merging`.

    void tell(UndoHistoryChanged::Change change) { owner.notify(UndoHistoryChanged(change)); }

    /// Enters a list of one command. The list exists before the command runs, so that only an
    /// observer can fail.
    void enter(Entries&& entry)
    {
        if (clean && *clean > done.size()) {
            clean.reset();
        }
        const auto dropped = std::exchange(undone, {}); // its destructor may use the history
        const auto isMerge = mergeIntoLast(entry.front());
        if (!isMerge) {
            done.splice(done.end(), entry);
            trim();
        }
        mayMerge = *merging > 0;
        tell(isMerge ? UndoHistoryChanged::Merged : UndoHistoryChanged::Entered);
    }

    bool mergeIntoLast(const UndoableCommand::Ptr& command)
    {
        if (!mayMerge || *merging == 0 || done.empty() || clean == done.size()) {
            return false;
        }
        const auto both = detail::merged(done.back(), command);
        if (both) {
            done.back() = both;
        }
        return both != nullptr;
    }

    /// Later commands belong to a new entry.
    void endMerge() noexcept { mayMerge = false; }

    void trim() noexcept
    {
        while (done.size() + undone.size() > limit) {
            if (!done.empty()) {
                forget(done, done.begin(), 0);
            } else {
                forget(undone, std::prev(undone.end()), undone.size() - 1); // none are done
            }
        }
    }

    /// Removes the entry at `place`, and the clean state too if it can then no longer be reached.
    void forget(Entries& entries, Entries::iterator entry, std::size_t place) noexcept
    {
        if (clean) {
            if (std::min(*clean, done.size()) <= place && place < std::max(*clean, done.size())) {
                clean.reset();
            } else if (place < *clean) {
                --*clean;
            }
        }
        Entries forgotten; // the destructors of commands may use it
        forgotten.splice(forgotten.end(), entries, entry);
        endMerge();
    }

    void requireIdle() const
    {
        if (running) {
            throw std::logic_error("A running command must not use the undo history.");
        }
    }

    /// Runs a command, during which the history cannot be used.
    template <class Operation>
    void run(Operation operation)
    {
        const ScopedFlag isRunning(running);
        endMerge();
        operation();
    }
};

namespace {

std::size_t validLimit(std::size_t limit)
{
    if (limit == 0) {
        throw std::invalid_argument("The limit of an undo history must not be 0.");
    }
    return limit;
}

bool leadsThrough(const Path& path, Rtid runTimeId)
{
    for (std::size_t index = 0; index < path.nbSegments(); ++index) {
        if (path.segment(index).runTimeId() == runTimeId) {
            return true;
        }
    }
    return false;
}

bool isOf(const UndoableCommand& command, Rtid runTimeId)
{
    const auto* base = dynamic_cast<const BaseUndoableCommand*>(&command);
    const auto* owned = dynamic_cast<const RunTimeCommand*>(&command);
    return (base && leadsThrough(base->path(), runTimeId)) ||
           (owned && owned->belongsTo(runTimeId));
}

} // namespace

UndoHistory::UndoHistory(std::size_t limit) : _state(std::make_unique<State>(*this))
{
    _state->limit = validLimit(limit);
}

UndoHistory::~UndoHistory() = default;

void UndoHistory::executeCmd(const UndoableCommand::Ptr& command) const
{
    if (_state->running) {
        command->execute();
        return;
    }
    if (auto* transaction = Transaction::receiver()) {
        transaction->run(command);
        return;
    }
    Entries entry{command};
    {
        const ScopedFlag running(_state->running);
        command->execute();
    }
    if (!detail::doesNothing(command)) {
        _state->enter(std::move(entry));
    }
}

void UndoHistory::registerCmd(const UndoableCommand::Ptr& command) const
{
    if (_state->running || detail::doesNothing(command)) {
        return;
    }
    if (auto* transaction = Transaction::receiver()) {
        transaction->take(command);
    } else {
        _state->enter({command});
    }
}

bool UndoHistory::canUndo() const noexcept
{
    return !_state->done.empty();
}

bool UndoHistory::canRedo() const noexcept
{
    return !_state->undone.empty();
}

std::string UndoHistory::undoText() const
{
    return canUndo() ? _state->done.back()->commandString() : std::string();
}

std::string UndoHistory::redoText() const
{
    return canRedo() ? _state->undone.front()->commandString() : std::string();
}

bool UndoHistory::undo()
{
    _state->requireIdle();
    if (!canUndo()) {
        return false;
    }
    auto& done = _state->done;
    _state->run([&] {
        done.back()->undo();
        _state->undone.splice(_state->undone.begin(), done, std::prev(done.end()));
    });
    _state->tell(UndoHistoryChanged::Undone);
    return true;
}

bool UndoHistory::redo()
{
    _state->requireIdle();
    if (!canRedo()) {
        return false;
    }
    auto& undone = _state->undone;
    _state->run([&] {
        undone.front()->redo();
        _state->done.splice(_state->done.end(), undone, undone.begin());
    });
    _state->tell(UndoHistoryChanged::Redone);
    return true;
}

bool UndoHistory::skipUndo()
{
    _state->requireIdle();
    if (!canUndo()) {
        return false;
    }
    _state->forget(_state->done, std::prev(_state->done.end()), _state->done.size() - 1);
    _state->tell(UndoHistoryChanged::Dropped);
    return true;
}

bool UndoHistory::skipRedo()
{
    _state->requireIdle();
    if (!canRedo()) {
        return false;
    }
    _state->forget(_state->undone, _state->undone.begin(), _state->done.size());
    _state->tell(UndoHistoryChanged::Dropped);
    return true;
}

std::vector<std::string> UndoHistory::entries() const
{
    std::vector<std::string> texts;
    for (const auto* entries : {&_state->done, &_state->undone}) {
        for (const auto& command : *entries) {
            texts.push_back(command->commandString());
        }
    }
    return texts;
}

std::size_t UndoHistory::nbDone() const noexcept
{
    return _state->done.size();
}

bool UndoHistory::isClean() const noexcept
{
    return _state->clean == _state->done.size();
}

void UndoHistory::setClean()
{
    _state->requireIdle();
    _state->clean = _state->done.size();
    _state->tell(UndoHistoryChanged::Cleaned);
}

UndoHistory::Merging::Merging(UndoHistory& history) : _depth(history._state->merging)
{
    if ((*_depth)++ == 0) {
        history._state->endMerge();
    }
}

UndoHistory::Merging::~Merging()
{
    --*_depth;
}

std::size_t UndoHistory::drop(const std::function<bool(const UndoableCommand&)>& concerns)
{
    _state->requireIdle();
    std::size_t nbChanged = 0;
    std::size_t place = 0;
    for (auto* entries : {&_state->done, &_state->undone}) {
        for (auto entry = entries->begin(); entry != entries->end();) {
            const auto current = entry++;
            auto left = detail::without(*current, concerns);
            nbChanged += left == *current ? 0 : 1;
            if (left) {
                current->swap(left);
                ++place;
            } else {
                _state->forget(*entries, current, place);
            }
        }
    }
    if (nbChanged > 0) {
        _state->tell(UndoHistoryChanged::Dropped);
    }
    return nbChanged;
}

std::size_t UndoHistory::dropRunTime(Rtid runTimeId)
{
    return drop([runTimeId](const auto& command) { return isOf(command, runTimeId); });
}

void UndoHistory::clear()
{
    _state->requireIdle();
    if (!canUndo() && !canRedo()) {
        return;
    }
    const auto wasClean = isClean();
    const auto done = std::exchange(_state->done, {});
    const auto undone = std::exchange(_state->undone, {});
    _state->clean = wasClean ? std::optional<std::size_t>(0) : std::nullopt;
    _state->endMerge();
    _state->tell(UndoHistoryChanged::Dropped);
}

std::size_t UndoHistory::limit() const noexcept
{
    return _state->limit;
}

void UndoHistory::setLimit(std::size_t limit)
{
    _state->requireIdle();
    _state->limit = validLimit(limit);
    const auto before = _state->done.size() + _state->undone.size();
    _state->trim();
    if (_state->done.size() + _state->undone.size() != before) {
        _state->tell(UndoHistoryChanged::Dropped);
    }
}

UndoHistoryChanged::UndoHistoryChanged(Change change) : _change(change) {}

UndoHistoryChanged::~UndoHistoryChanged() = default;

} // namespace Kiv_v4::host
