#pragma once

#include <exception>

#include "kiv/export.h"
#include "kiv/sceneNotification.h"

namespace Kiv_v4::kit {

/// Notifies the installed scene; does nothing if there is none, as in a test or a script.
KIV_EXPORT void announce(const SceneChanged& change);

/// Writes to the log that an announcement threw an exception with that text.
KIV_EXPORT void logUnannounced(const char* what) noexcept;

/// Calls `tell`, which notifies observers of a change. Exceptions, also from a lack of memory, go
/// to the log: the change was made, so its command must not fail. All commands of the kit announce
/// like this.
template <class Tell>
void announced(Tell tell) noexcept
{
    try {
        tell();
    } catch (const std::exception& caught) {
        logUnannounced(caught.what());
    } catch (...) {
        logUnannounced("an exception that is not a std::exception");
    }
}

} // namespace Kiv_v4::kit
