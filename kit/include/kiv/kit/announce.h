#pragma once

#include "kiv/export.h"
#include "kiv/sceneNotification.h"

namespace Kiv_v4::kit {

/// Notifies the installed scene; does nothing if there is none, as in a test or a script.
KIV_EXPORT void announce(const SceneChanged& change);

} // namespace Kiv_v4::kit
