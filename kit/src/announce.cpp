#include "kiv/kit/announce.h"

#include <string>

#include "kiv/log.h"
#include "kiv/scene.h"

namespace Kiv_v4::kit {

void announce(const SceneChanged& change)
{
    if (Scene::hasInstance()) {
        Scene::instance().notify(change);
    }
}

void logUnannounced(const char* what) noexcept
{
    try {
        log("announce", "kit/src/announce", __LINE__,
            std::string("An observer or the announcement of a change threw ") + what);
    } catch (...) {
        // There is no memory for the message.
    }
}

} // namespace Kiv_v4::kit
