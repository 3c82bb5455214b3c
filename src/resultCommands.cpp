#include "kiv/resultCommands.h"

namespace Kiv_v4 {

SceneItemResultUndoableCommand::~SceneItemResultUndoableCommand() = default;

InsertChildCommand::~InsertChildCommand() = default;

} // namespace Kiv_v4
