#pragma once

#include <functional>
#include <memory>
#include <string>

#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace app::shell {

/// Tells of every notification of the scene, the global selection, attributes, visibility, and of
/// the transforms, cameras and lights of the items below a root, each as one line. Stops when
/// destroyed.
class Watch
{
public:
    using Tell = std::function<void(const std::string& line)>;

    Watch(Tell tell, const Kiv_v4::SceneItem::Ptr& root);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch();

    /// Watches the items at and under `path`, which are new there.
    void include(const Kiv_v4::Path& path);

private:
    void watch(const Kiv_v4::SceneItem::Ptr& top);

    const Kiv_v4::Observer::Ptr _observer;
};

} // namespace app::shell
