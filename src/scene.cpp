#include "kiv/scene.h"

#include "kiv/sceneNotification.h"

#include "processWide.h"

namespace Kiv_v4 {

namespace {

void gather(SceneCompositeNotification& composite, const SceneChanged& change)
{
    if (change.opType() != SceneChanged::Composite) {
        composite.appendSceneChanged(change);
        return;
    }
    for (const auto& op : static_cast<const SceneCompositeNotification&>(change)) {
        composite.appendOp(op);
    }
}

} // namespace

void Scene::initializeInstance(const std::shared_ptr<Scene>& scene)
{
    detail::install(scene, "Cannot initialize scene instance more than once.");
}

Scene& Scene::instance()
{
    return *detail::processWide<Ptr>();
}

bool Scene::hasInstance()
{
    return detail::processWide<Ptr>() != nullptr;
}

Scene::Scene() = default;

Scene::~Scene() = default;

void Scene::notify(const Notification& notification)
{
    const auto& change = static_cast<const SceneChanged&>(notification);
    auto& installed = instance();
    if (installed.inCompositeNotification()) {
        gather(*installed._compositeNotification, change);
        return;
    }
    Subject::notify(change);
    switch (change.opType()) {
    case SceneChanged::Added:
        return installed.postNotifyObjectAdd(static_cast<const ObjectAdd&>(change));
    case SceneChanged::Deleted:
        return installed.postNotifyObjectDelete(static_cast<const ObjectDelete&>(change));
    case SceneChanged::PathChanged:
        return installed.postNotifyObjectPathChange(static_cast<const ObjectPathChange&>(change));
    case SceneChanged::SubtreeInvalidated:
        return installed.postNotifySubtreeInvalidate(static_cast<const SubtreeInvalidate&>(change));
    case SceneChanged::Composite:
        return; // its hook is run by the guard's end
    }
}

bool Scene::inCompositeNotification() const
{
    return _compositeNotification != nullptr;
}

void Scene::beginNotificationGuard()
{
    _compositeNotification = std::make_unique<SceneCompositeNotification>();
}

void Scene::endNotificationGuard()
{
    const auto composite = std::move(_compositeNotification);
    notify(*composite);
    instance().postNotifySceneCompositeChange(*composite);
}

void Scene::postNotifyObjectAdd(const ObjectAdd& /*notification*/) {}

void Scene::postNotifyObjectDelete(const ObjectDelete& /*notification*/) {}

void Scene::postNotifyObjectPathChange(const ObjectPathChange& /*notification*/) {}

void Scene::postNotifySubtreeInvalidate(const SubtreeInvalidate& /*notification*/) {}

void Scene::postNotifySceneCompositeChange(const SceneCompositeNotification& /*notification*/) {}

} // namespace Kiv_v4
