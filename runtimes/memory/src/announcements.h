#pragma once

#include <optional>

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

/// Gathers what is announced while it lives into one notification, unless `gather` is false.
class AnnouncementBatch
{
public:
    explicit AnnouncementBatch(bool gather = true);

private:
    std::optional<NotificationGuard> _guard;
};

} // namespace Kiv_v4::memory
