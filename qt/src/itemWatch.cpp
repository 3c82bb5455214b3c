#include "itemWatch.h"

#include "kiv/attributeNotification.h"
#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/object3d.h"
#include "kiv/object3dNotification.h"
#include "kiv/scene.h"
#include "kiv/transform3d.h"

#include "attempt.h"
#include "listening.h"

namespace Kiv_v4::qt {

AttributeModel::Watch::Watch(const std::vector<Path>& paths, std::function<void()> changed)
    : _changed(std::move(changed)), _paths(paths.begin(), paths.end()),
      _observer(detail::listeningTo<Notification>(
          [this](const Notification& notification) { receive(notification); }))
{
    watchAll();
    if (_paths.size() <= kWatched) {
        detail::attempt("follow changes", [this] { watchEach(); });
    }
}

AttributeModel::Watch::~Watch()
{
    Attributes::removeObserver(_observer);
    Object3d::removeObserver(_observer);
    if (Scene::hasInstance()) {
        Scene::instance().removeObserver(_observer);
    }
    for (const auto& item : _watched) {
        Transform3d::removeObserver(item, _observer);
        Camera::removeObserver(item, _observer);
        Light::removeObserver(item, _observer);
    }
}

void AttributeModel::Watch::watchAll()
{
    Attributes::addObserver(_observer);
    Object3d::addObserver(_observer);
    if (Scene::hasInstance()) {
        Scene::instance().addObserver(_observer);
    }
}

void AttributeModel::Watch::watchEach()
{
    if (_paths.size() == 1 && Scene::hasInstance()) {
        _place.emplace(*_paths.begin());
        _place->addObserver(_observer);
    }
    for (const auto& path : _paths) {
        if (const auto item = Hierarchy::createItem(path)) {
            _watched.push_back(item);
            Transform3d::addObserver(item, _observer);
            Camera::addObserver(item, _observer);
            Light::addObserver(item, _observer);
        }
    }
}

void AttributeModel::Watch::receive(const Notification& notification)
{
    const auto* attribute = dynamic_cast<const AttributeChanged*>(&notification);
    const auto* visibility = dynamic_cast<const VisibilityChanged*>(&notification);
    if ((!attribute || _paths.contains(attribute->path())) &&
        (!visibility || _paths.contains(visibility->path()))) {
        _changed();
    }
}

} // namespace Kiv_v4::qt
