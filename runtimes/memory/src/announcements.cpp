#include "announcements.h"

#include "kiv/attributeNotification.h"
#include "kiv/attributes.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"

namespace Kiv_v4::memory {

namespace {

template <class Change, class... Arguments>
void announce(const Arguments&... arguments)
{
    if (Scene::hasInstance()) {
        Scene::instance().notify(Change(arguments...));
    }
}

} // namespace

void announceAdd(const SceneItem::Ptr& item)
{
    announce<ObjectAdd>(item);
}

void announcePreDelete(const SceneItem::Ptr& item)
{
    announce<ObjectPreDelete>(item);
}

void announcePostDelete(const SceneItem::Ptr& item)
{
    announce<ObjectPostDelete>(item);
}

void announceRename(const SceneItem::Ptr& item, const Path& previousPath)
{
    announce<ObjectRename>(item, previousPath);
}

void announceReparent(const SceneItem::Ptr& item, const Path& previousPath)
{
    announce<ObjectReparent>(item, previousPath);
}

void announceInvalidate(const SceneItem::Ptr& root)
{
    announce<SubtreeInvalidate>(root);
}

void announceAttribute(const Path& item, const std::string& name)
{
    Attributes::notify(AttributeChanged(item, name));
}

void announceMetadata(const Path& item, const std::string& attribute, const std::string& key)
{
    Attributes::notify(AttributeMetadataChanged(item, attribute, key));
}

AnnouncementBatch::AnnouncementBatch(bool gather)
{
    if (gather && Scene::hasInstance()) {
        _guard.emplace(Scene::instance());
    }
}

} // namespace Kiv_v4::memory
