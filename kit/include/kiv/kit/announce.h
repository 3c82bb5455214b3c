#pragma once

#include "kiv/export.h"
#include "kiv/sceneNotification.h"

namespace Kiv_v4::kit {

/// Tells the host's scene, if there is one: a test or a script may run without.
KIV_EXPORT void announce(const SceneChanged& change);

} // namespace Kiv_v4::kit
