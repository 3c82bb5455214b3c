#include "kiv/observedItems.h"

#include "kiv/attributeNotification.h"
#include "kiv/cameraNotification.h"
#include "kiv/lightNotification.h"
#include "kiv/transform3dNotification.h"

#include "detail/itemObserverRegistry.h"

namespace Kiv_v4 {

namespace {

template <class Registry>
void addAll(std::vector<ObservedItem>& items, const char* interfaceName)
{
    Registry::instance().forEach([&](const Path& path, std::size_t nbObservers) {
        items.push_back({interfaceName, path, nbObservers});
    });
}

} // namespace

std::vector<ObservedItem> observedItems()
{
    using detail::ItemObserverRegistry;
    std::vector<ObservedItem> items;
    addAll<ItemObserverRegistry<Transform3dChanged>>(items, "Transform3d");
    addAll<ItemObserverRegistry<CameraChanged>>(items, "Camera");
    addAll<ItemObserverRegistry<LightChanged>>(items, "Light");
    addAll<ItemObserverRegistry<AttributeChanged, detail::UnkeptItemSubject>>(items, "Attributes");
    return items;
}

} // namespace Kiv_v4
