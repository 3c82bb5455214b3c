#include "kiv/runTimeRegistration.h"

#include "kiv/attributes.h"
#include "kiv/pathString.h"
#include "kiv/rawAddress.h"

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
    // Remembering forgets what has died: entries for the run-time's objects lead into its code.
    static_cast<void>(getRawAddress(SceneItem::Ptr()));
    static_cast<void>(getRawAddress(Attributes::Ptr()));
}

} // namespace Kiv_v4
