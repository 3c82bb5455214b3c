#pragma once

#include <exception>
#include <string>

#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {
class Scene;
}

namespace Kiv_v4::memory {

void logUnannounced(const char* what) noexcept;

/// Tells observers of a change that was made. What they throw that subjects let out, and the want
/// of memory, goes to the log: the change stands whoever heard of it, so what made it must not
/// fail.
template <class Tell>
void announced(Tell tell) noexcept
{
    try {
        tell();
    } catch (const std::exception& caught) {
        logUnannounced(caught.what());
    } catch (...) {
        logUnannounced("that is no std::exception");
    }
}

// Tells the run-times that are mounted under gateways, and then the observers of the installed
// scene, what changed; without an installed scene these are left out.

void announceAdd(const SceneItem::Ptr& item) noexcept;
void announcePreDelete(const SceneItem::Ptr& item) noexcept;
void announcePostDelete(const SceneItem::Ptr& item) noexcept;
void announceRename(const SceneItem::Ptr& item, const Path& previousPath) noexcept;
void announceReparent(const SceneItem::Ptr& item, const Path& previousPath) noexcept;
void announceInvalidate(const SceneItem::Ptr& root) noexcept;

// Tells the observers of attributes.

void announceAttribute(const Path& item, const std::string& name) noexcept;
void announceMetadata(const Path& item, const std::string& attribute,
                      const std::string& key) noexcept;

/// Gathers what is announced of the scene while it lives into one notification, unless `gather` is
/// false.
class AnnouncementBatch
{
public:
    explicit AnnouncementBatch(bool gather = true);
    AnnouncementBatch(const AnnouncementBatch&) = delete;
    AnnouncementBatch& operator=(const AnnouncementBatch&) = delete;
    ~AnnouncementBatch();

private:
    Scene* _scene = nullptr; ///< Null when nothing is gathered, or by somebody else.
};

} // namespace Kiv_v4::memory
