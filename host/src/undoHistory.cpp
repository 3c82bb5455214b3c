#include "kiv/host/undoHistory.h"

#include <iterator>
#include <list>
#include <stdexcept>
#include <utility>

namespace Kiv_v4::host {

using Entries = std::list<UndoableCommand::Ptr>;

struct UndoHistory::State
{
    Entries done;
    Entries undone; // can be redone, the first one first
    std::size_t limit = kDefaultLimit;
    bool running = false;

    /// Enters a list of one command. Never fails: what it takes is there before the command runs.
    void enter(Entries&& entry) noexcept
    {
        undone.clear();
        done.splice(done.end(), entry);
        trim();
    }

    void trim() noexcept
    {
        while (done.size() + undone.size() > limit) {
            done.empty() ? undone.pop_back() : done.pop_front();
        }
    }

    void requireIdle() const
    {
        if (running) {
            throw std::logic_error("The undo history cannot be used by a command that it runs.");
        }
    }
};

namespace {

/// Says that a command is running for as long as it lives.
class Running
{
public:
    explicit Running(bool& flag) : _flag(flag), _before(flag) { flag = true; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { _flag = _before; }

private:
    bool& _flag;
    const bool _before;
};

std::size_t validLimit(std::size_t limit)
{
    if (limit == 0) {
        throw std::invalid_argument("An undo history holds at least one entry.");
    }
    return limit;
}

} // namespace

UndoHistory::UndoHistory(std::size_t limit) : _state(std::make_unique<State>())
{
    _state->limit = validLimit(limit);
}

UndoHistory::~UndoHistory() = default;

void UndoHistory::executeCmd(const UndoableCommand::Ptr& command) const
{
    const auto nested = _state->running;
    Entries entry{command};
    {
        const Running running(_state->running);
        command->execute();
    }
    if (!nested) {
        _state->enter(std::move(entry));
    }
}

void UndoHistory::registerCmd(const UndoableCommand::Ptr& command) const
{
    if (!_state->running) {
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

bool UndoHistory::undo()
{
    _state->requireIdle();
    if (!canUndo()) {
        return false;
    }
    const Running running(_state->running);
    auto& done = _state->done;
    done.back()->undo();
    _state->undone.splice(_state->undone.begin(), done, std::prev(done.end()));
    return true;
}

bool UndoHistory::redo()
{
    _state->requireIdle();
    if (!canRedo()) {
        return false;
    }
    const Running running(_state->running);
    auto& undone = _state->undone;
    undone.front()->redo();
    _state->done.splice(_state->done.end(), undone, undone.begin());
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

void UndoHistory::clear()
{
    _state->requireIdle();
    _state->done.clear();
    _state->undone.clear();
}

std::size_t UndoHistory::limit() const noexcept
{
    return _state->limit;
}

void UndoHistory::setLimit(std::size_t limit)
{
    _state->requireIdle();
    _state->limit = validLimit(limit);
    _state->trim();
}

} // namespace Kiv_v4::host
