#include "kiv/runTimeRegistration.h"

#include "kiv/pathString.h"

namespace Kiv_v4 {

RunTimeRegistration::RunTimeRegistration(const std::string& name, char separator,
                                         const RunTimeMgr::Handlers& handlers)
    : _separator(separator), _id(RunTimeMgr::instance().register_(name, handlers))
{
    try {
        PathString::registerPathComponentSeparator(_id, _separator);
    } catch (...) {
        RunTimeMgr::instance().unregister(_id);
        throw;
    }
}

RunTimeRegistration::~RunTimeRegistration()
{
    try {
        PathString::unregisterPathComponentSeparator(_id, _separator);
    } catch (const std::out_of_range&) {
        // Somebody took the separator back already.
    }
    RunTimeMgr::instance().unregister(_id);
}

} // namespace Kiv_v4
