#include "kiv/runTimeCommand.h"

namespace Kiv_v4 {

RunTimeCommand::RunTimeCommand() = default;

RunTimeCommand::~RunTimeCommand() = default;

} // namespace Kiv_v4
