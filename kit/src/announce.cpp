#include "kiv/kit/announce.h"

#include "kiv/scene.h"

namespace Kiv_v4::kit {

void announce(const SceneChanged& change)
{
    if (Scene::hasInstance()) {
        Scene::instance().notify(change);
    }
}

} // namespace Kiv_v4::kit
