#pragma once

#include <optional>
#include <string>

#include "kiv/notificationGuard.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::memory {

// Tells the observers of the installed scene what changed; without an installed scene nobody is
// told.

void announceAdd(const SceneItem::Ptr& item);
void announcePreDelete(const SceneItem::Ptr& item);
void announcePostDelete(const SceneItem::Ptr& item);
void announceRename(const SceneItem::Ptr& item, const Path& previousPath);
void announceReparent(const SceneItem::Ptr& item, const Path& previousPath);
void announceInvalidate(const SceneItem::Ptr& root);

// Tells the observers of attributes.

void announceAttribute(const Path& item, const std::string& name);
void announceMetadata(const Path& item, const std::string& attribute, const std::string& key);

/// Gathers what is announced of the scene while it lives into one notification, unless `gather` is
/// false.
class AnnouncementBatch
{
public:
    explicit AnnouncementBatch(bool gather = true);

private:
    std::optional<NotificationGuard> _guard;
};

} // namespace Kiv_v4::memory
