#include "kiv/scene.h"

#include "kiv/sceneNotification.h"

#include "detail/singleton.h"

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

Scene::Ptr& installed()
{
    static detail::NoDestructor<Scene::Ptr> scene;
    static const detail::EmptiedAtExit<Scene::Ptr> emptied(scene);
    return *scene;
}

} // namespace

void Scene::initializeInstance(const std::shared_ptr<Scene>& scene)
{
    detail::installSingleton(installed(), scene,
                             "Cannot initialize scene instance more than once.");
}

Scene& Scene::instance()
{
    return *installed();
}

bool Scene::hasInstance()
{
    return installed() != nullptr;
}

Scene::Scene() = default;

Scene::~Scene() = default;

void Scene::notify(const Notification& notification)
{
    const auto& change = static_cast<const SceneChanged&>(notification);
    auto& scene = instance();
    if (scene.inCompositeNotification()) {
        gather(*scene._compositeNotification, change);
        return;
    }
    Subject::notify(change);
    switch (change.opType()) {
    case SceneChanged::Added:
        return scene.postNotifyObjectAdd(static_cast<const ObjectAdd&>(change));
    case SceneChanged::Deleted:
        return scene.postNotifyObjectDelete(static_cast<const ObjectDelete&>(change));
    case SceneChanged::PathChanged:
        return scene.postNotifyObjectPathChange(static_cast<const ObjectPathChange&>(change));
    case SceneChanged::SubtreeInvalidated:
        return scene.postNotifySubtreeInvalidate(static_cast<const SubtreeInvalidate&>(change));
    case SceneChanged::Composite:
        return; // the end of the guard runs its hook
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
