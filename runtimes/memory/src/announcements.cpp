#include "announcements.h"

#include "kiv/attributeNotification.h"
#include "kiv/attributes.h"
#include "kiv/kit/gateways.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"

namespace Kiv_v4::memory {

namespace {

/// Notifies the run-times whose items are shown under gateways, before the scene's observers look
/// for these items.
template <class... Paths>
void tellFollowers(void (*tell)(const Paths&...), const Paths&... paths) noexcept
{
    announced([&] { tell(paths...); });
}

template <class Change, class... Arguments>
void announce(const Arguments&... arguments) noexcept
{
    announced([&] {
        if (Scene::hasInstance()) {
            Scene::instance().notify(Change(arguments...));
        }
    });
}

} // namespace

void announceAdd(const SceneItem::Ptr& item) noexcept
{
    tellFollowers(&kit::GatewayOwner::itemAdded, item->path());
    announce<ObjectAdd>(item);
}

void announcePreDelete(const SceneItem::Ptr& item) noexcept
{
    announce<ObjectPreDelete>(item);
}

void announcePostDelete(const SceneItem::Ptr& item) noexcept
{
    tellFollowers(&kit::GatewayOwner::itemRemoved, item->path());
    announce<ObjectPostDelete>(item);
}

void announceRename(const SceneItem::Ptr& item, const Path& previousPath) noexcept
{
    tellFollowers(&kit::GatewayOwner::itemMoved, previousPath, item->path());
    announce<ObjectRename>(item, previousPath);
}

void announceReparent(const SceneItem::Ptr& item, const Path& previousPath) noexcept
{
    tellFollowers(&kit::GatewayOwner::itemMoved, previousPath, item->path());
    announce<ObjectReparent>(item, previousPath);
}

void announceInvalidate(const SceneItem::Ptr& root) noexcept
{
    announce<SubtreeInvalidate>(root);
}

void announceAttribute(const Path& item, const std::string& name) noexcept
{
    announced([&] { Attributes::notify(AttributeChanged(item, name)); });
}

void announceMetadata(const Path& item, const std::string& attribute,
                      const std::string& key) noexcept
{
    announced([&] { Attributes::notify(AttributeMetadataChanged(item, attribute, key)); });
}

AnnouncementBatch::AnnouncementBatch(bool gather)
{
    if (gather && Scene::hasInstance() && !Scene::instance().inCompositeNotification()) {
        Scene::instance().beginNotificationGuard();
        _scene = &Scene::instance();
    }
}

AnnouncementBatch::~AnnouncementBatch()
{
    if (_scene) {
        announced([this] { _scene->endNotificationGuard(); });
    }
}

} // namespace Kiv_v4::memory
