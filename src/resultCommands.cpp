#include "kiv/resultCommands.h"

namespace Kiv_v4 {

SceneItemResultUndoableCommand::~SceneItemResultUndoableCommand() = default;

InsertChildCommand::~InsertChildCommand() = default;

AttributeResultUndoableCommand::~AttributeResultUndoableCommand() = default;

ConnectionResultUndoableCommand::~ConnectionResultUndoableCommand() = default;

SelectionUndoableCommand::~SelectionUndoableCommand() = default;

} // namespace Kiv_v4
