#pragma once

#include <functional>
#include <memory>
#include <string>

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/observer.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

/// Returns what a notification of the library tells, in a line: `scene renamed: /world/a ->
/// /world/b`. `notification` for one of a class that the library does not have.
[[nodiscard]] KIV_EXPORT std::string textOf(const Notification& notification);

/// Tells of everything that happens: every notification of the installed scene, the global
/// selection, attributes, visibility, and of the transforms, cameras and lights of the items at and
/// under a root, those that come later among them. For logs and for finding out who announces what.
///
///     const host::SceneWatch watch([&](const Notification& n) { log(host::textOf(n)); }, root);
///
/// **Lifetime.** Ends when it is destroyed, which must not be while it tells.
///
/// **Cost.** Linear in the items at the start, and in those that are added.
class KIV_EXPORT SceneWatch
{
public:
    /// Told of one notification. It may be called inside others.
    using Tell = std::function<void(const Notification&)>;

    /// A scene and a global selection must be installed, and `root` must not be null.
    SceneWatch(Tell tell, const SceneItem::Ptr& root);
    SceneWatch(const SceneWatch&) = delete;
    SceneWatch& operator=(const SceneWatch&) = delete;
    ~SceneWatch();

private:
    const Observer::Ptr _observer;
};

} // namespace Kiv_v4::host
