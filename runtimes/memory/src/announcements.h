#pragma once

#include <string>

#include "kiv/kit/announce.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {
class Scene;
}

namespace Kiv_v4::memory {

using kit::announced;

// These notify the run-times that are mounted under gateways and then the observers of the
// installed scene, if there is one.

void announceAdd(const SceneItem::Ptr& item) noexcept;
void announcePreDelete(const SceneItem::Ptr& item) noexcept;
void announcePostDelete(const SceneItem::Ptr& item) noexcept;
void announceRename(const SceneItem::Ptr& item, const Path& previousPath) noexcept;
void announceReparent(const SceneItem::Ptr& item, const Path& previousPath) noexcept;
void announceInvalidate(const SceneItem::Ptr& root) noexcept;

// Notify the observers of attributes.

void announceAttribute(const Path& item, const std::string& name) noexcept;
void announceMetadata(const Path& item, const std::string& attribute,
                      const std::string& key) noexcept;

/// Gathers the notifications of the scene while it lives into one, unless `gather` is false.
class AnnouncementBatch
{
public:
    explicit AnnouncementBatch(bool gather = true);
    AnnouncementBatch(const AnnouncementBatch&) = delete;
    AnnouncementBatch& operator=(const AnnouncementBatch&) = delete;
    ~AnnouncementBatch();

private:
    Scene* _scene = nullptr; ///< Null if nothing is gathered, or another guard gathers.
};

} // namespace Kiv_v4::memory
