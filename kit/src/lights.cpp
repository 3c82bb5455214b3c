#include "kiv/kit/lights.h"

#include "kiv/kit/handlers.h"

#include "valuesAccess.h"

namespace Kiv_v4::kit {

LightHandler::Ptr lightHandler(LightAccess access)
{
    using Source = ValuesAccess<LightValues, LightAccess, &Light::notify>;
    const auto shared = std::make_shared<const LightAccess>(std::move(access));
    return lightHandler([shared](const SceneItem::Ptr& item) -> Light::Ptr {
        return shared->get(item->path()) ? std::make_shared<LightOf<Source>>(Source(shared, item))
                                         : nullptr;
    });
}

} // namespace Kiv_v4::kit
