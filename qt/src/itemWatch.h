#pragma once

#include <functional>
#include <optional>
#include <unordered_set>
#include <vector>

#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/qt/attributeModel.h"
#include "kiv/transform3dPathSubject.h"

namespace Kiv_v4::qt {

/// Calls a function when anything that is shown of some items changes, or where they are.
class AttributeModel::Watch
{
public:
    Watch(const std::vector<Path>& paths, std::function<void()> changed);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch();

private:
    void watchAll();
    void watchEach();
    void receive(const Notification& notification);

    const std::function<void()> _changed;
    const std::unordered_set<Path> _paths;
    const Observer::Ptr _observer;
    std::vector<SceneItem::Ptr> _watched;         ///< Each observed by itself.
    std::optional<Transform3dPathSubject> _place; ///< Of a single item, in the world.
};

} // namespace Kiv_v4::qt
