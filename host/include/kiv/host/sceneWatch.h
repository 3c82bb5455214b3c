#pragma once

#include <functional>
#include <memory>
#include <string>

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/observer.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

/// Returns a notification of the library as one line: `scene renamed: /world/a -> /world/b`.
/// Returns `notification` for other classes.
[[nodiscard]] KIV_EXPORT std::string textOf(const Notification& notification);

/// Observes everything: every notification of the installed scene, the global selection, attributes
/// and visibility, and of the transforms, cameras and lights of a root and its descendants,
/// including items that are added later. For logs, and to find out which run-time announces what.
///
///     const host::SceneWatch watch([&](const Notification& n) { log(host::textOf(n)); }, root);
///
/// **Lifetime.** Observes until it is destroyed, which must not happen inside a call of `tell`.
///
/// **Cost.** Linear in the items at the start, and in those that are added.
class KIV_EXPORT SceneWatch
{
public:
    /// Called with one notification; calls may nest.
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
