#include "kiv/host/undoHistory.h"

#include <algorithm>
#include <deque>
#include <stdexcept>

namespace Kiv_v4::host {

struct UndoHistory::State
{
    std::deque<UndoableCommand::Ptr> entries;
    std::size_t nbDone = 0; // the entries behind these can be redone
    std::size_t limit = kDefaultLimit;
    bool running = false;

    void enter(const UndoableCommand::Ptr& command)
    {
        entries.resize(nbDone);
        entries.push_back(command);
        ++nbDone;
        trim();
    }

    void trim()
    {
        while (entries.size() > limit && nbDone > 0) {
            entries.pop_front();
            --nbDone;
        }
        entries.resize(std::min(entries.size(), limit));
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
    {
        const Running running(_state->running);
        command->execute();
    }
    if (!nested) {
        _state->enter(command);
    }
}

void UndoHistory::registerCmd(const UndoableCommand::Ptr& command) const
{
    if (!_state->running) {
        _state->enter(command);
    }
}

bool UndoHistory::canUndo() const noexcept
{
    return _state->nbDone > 0;
}

bool UndoHistory::canRedo() const noexcept
{
    return _state->nbDone < _state->entries.size();
}

bool UndoHistory::undo()
{
    _state->requireIdle();
    if (!canUndo()) {
        return false;
    }
    const Running running(_state->running);
    _state->entries[_state->nbDone - 1]->undo();
    --_state->nbDone;
    return true;
}

bool UndoHistory::redo()
{
    _state->requireIdle();
    if (!canRedo()) {
        return false;
    }
    const Running running(_state->running);
    _state->entries[_state->nbDone]->redo();
    ++_state->nbDone;
    return true;
}

std::vector<std::string> UndoHistory::entries() const
{
    std::vector<std::string> texts;
    for (const auto& command : _state->entries) {
        texts.push_back(command->commandString());
    }
    return texts;
}

std::size_t UndoHistory::nbDone() const noexcept
{
    return _state->nbDone;
}

void UndoHistory::clear()
{
    _state->requireIdle();
    _state->entries.clear();
    _state->nbDone = 0;
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
