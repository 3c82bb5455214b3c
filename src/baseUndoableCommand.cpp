#include "kiv/baseUndoableCommand.h"

namespace Kiv_v4 {

BaseUndoableCommand::BaseUndoableCommand(const Path& path) : _path(path) {}

BaseUndoableCommand::~BaseUndoableCommand() = default;

} // namespace Kiv_v4
