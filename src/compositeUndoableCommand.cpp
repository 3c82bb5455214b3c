#include "kiv/compositeUndoableCommand.h"

namespace Kiv_v4 {

namespace {

template <class Iterator>
void each(Iterator first, Iterator last, void (UndoableCommand::*run)())
{
    for (; first != last; ++first) {
        if (const auto& command = *first) {
            (*command.*run)();
        }
    }
}

} // namespace

CompositeUndoableCommand::CompositeUndoableCommand() = default;

CompositeUndoableCommand::CompositeUndoableCommand(
    std::initializer_list<UndoableCommand::Ptr> commands)
    : _commands(commands)
{}

CompositeUndoableCommand::CompositeUndoableCommand(const Commands& commands) : _commands(commands)
{}

CompositeUndoableCommand::~CompositeUndoableCommand() = default;

CompositeUndoableCommand::Ptr
CompositeUndoableCommand::create(std::initializer_list<UndoableCommand::Ptr> commands)
{
    return std::make_shared<CompositeUndoableCommand>(commands);
}

void CompositeUndoableCommand::append(const UndoableCommand::Ptr& command)
{
    _commands.push_back(command);
}

void CompositeUndoableCommand::execute()
{
    each(_commands.begin(), _commands.end(), &UndoableCommand::execute);
}

void CompositeUndoableCommand::undo()
{
    each(_commands.rbegin(), _commands.rend(), &UndoableCommand::undo);
}

void CompositeUndoableCommand::redo()
{
    each(_commands.begin(), _commands.end(), &UndoableCommand::redo);
}

} // namespace Kiv_v4
