#include "kiv/runTimeRegistration.h"

#include "kiv/attributeNotification.h"
#include "kiv/cameraNotification.h"
#include "kiv/lightNotification.h"
#include "kiv/pathString.h"
#include "kiv/transform3dNotification.h"

#include "detail/itemObserverRegistry.h"
#include "detail/notation.h"
#include "detail/rawAddresses.h"

namespace Kiv_v4 {

namespace {

using detail::ItemObserverRegistry;

/// Removes the observers of the run-time's items in each of the registries.
template <class... Registry>
void forgetIn(Rtid runTimeId) noexcept
{
    (Registry::instance().forget(runTimeId), ...);
}

} // namespace

RunTimeRegistration::RunTimeRegistration(const std::string& name, char separator,
                                         const RunTimeMgr::Handlers& handlers)
    : _id(RunTimeMgr::instance().register_(name, handlers))
{
    try {
        PathString::registerPathComponentSeparator(_id, separator);
    } catch (...) {
        RunTimeMgr::instance().unregister(_id);
        throw;
    }
}

RunTimeRegistration::~RunTimeRegistration()
{
    detail::forgetNotation(_id);
    RunTimeMgr::instance().unregister(_id);
    // Weak references to the run-time's objects lead into its code, even after the objects died.
    forgetIn<ItemObserverRegistry<AttributeChanged, detail::UnkeptItemSubject>,
             ItemObserverRegistry<Transform3dChanged>, ItemObserverRegistry<CameraChanged>,
             ItemObserverRegistry<LightChanged>>(_id);
    detail::forgetDeadAddresses();
}

} // namespace Kiv_v4
