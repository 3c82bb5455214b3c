#include "attempt.h"

#include <stdexcept>

#include "kiv/log.h"
#include "kiv/undoableCommandMgr.h"

namespace Kiv_v4::qt::detail {

void complain(const std::string& what, const std::string& why, const std::source_location& where)
{
    log(where.function_name(), where.file_name(), static_cast<int>(where.line()),
        what + ": " + why);
}

void execute(const UndoableCommand::Ptr& command)
{
    if (!command) {
        throw std::runtime_error("the run-time refuses");
    }
    UndoableCommandMgr::instance().executeCmd(command);
}

} // namespace Kiv_v4::qt::detail
