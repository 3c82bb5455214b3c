#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

UndoableCommand::UndoableCommand() = default;

UndoableCommand::~UndoableCommand() = default;

std::string UndoableCommand::commandString() const
{
    return {};
}

void UndoableCommand::execute()
{
    redo();
}

} // namespace Kiv_v4
