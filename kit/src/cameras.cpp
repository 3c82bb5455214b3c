#include "kiv/kit/cameras.h"

#include "kiv/kit/handlers.h"

#include "valuesAccess.h"

namespace Kiv_v4::kit {

CameraHandler::Ptr cameraHandler(CameraAccess access)
{
    using Source = ValuesAccess<CameraValues, CameraAccess, &Camera::notify>;
    const auto shared = std::make_shared<const CameraAccess>(std::move(access));
    return cameraHandler([shared](const SceneItem::Ptr& item) -> Camera::Ptr {
        return shared->get(item->path()) ? std::make_shared<CameraOf<Source>>(Source(shared, item))
                                         : nullptr;
    });
}

} // namespace Kiv_v4::kit
