#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/subject.h"

namespace Kiv_v4 {

class ObjectAdd;
class ObjectDelete;
class ObjectPathChange;
class SceneCompositeNotification;
class SubtreeInvalidate;

/// The one subject through which run-times announce changes of the scene's structure: objects
/// added, deleted, renamed or moved, and subtrees that must be queried again. Observers receive the
/// notifications of `sceneNotification.h`.
///
///     Scene::initializeInstance(std::make_shared<Scene>()); // the host, at start-up
///     Scene::instance().addObserver(outliner);              // the host
///     Scene::instance().notify(ObjectAdd(item));            // a run-time, after the change
///
/// A `NotificationGuard` on the scene gathers the changes of a batch; observers receive one
/// `SceneCompositeNotification` when it closes, even if nothing was gathered.
///
/// A host that has work to do after all observers of a change installs a derived class that
/// overrides the hooks `postNotify...`. An exception from a hook passes through `notify`; when a
/// guard closes, it terminates the process (`NotificationGuard`).
///
/// **The installed scene decides.** The installed scene decides whether notifications are gathered,
/// into which composite, and whose hooks run, also for a `Scene` object that is not installed. Such
/// an object only serves to notify its own observers.
///
/// **Lifetime.** The installed scene lives until it is cleared, at the latest until the library is
/// unloaded. If the code of the scene or of its observers is in a plug-in, the host must clear the
/// scene before it unloads the plug-in. The scene must not be cleared from inside a notification.
class KIV_EXPORT Scene : public Subject
{
public:
    using Ptr = std::shared_ptr<Scene>;

    /// Installs the scene of the process or, with null, clears it. Throws `std::invalid_argument`
    /// and keeps the installed scene if there is one and `scene` is not null.
    static void initializeInstance(const std::shared_ptr<Scene>& scene);

    /// Returns the installed scene. There must be one.
    [[nodiscard]] static Scene& instance();

    /// Whether a scene is installed. Run-times that also work without a host must ask first.
    [[nodiscard]] static bool hasInstance();

    Scene();
    ~Scene() override;

    /// Delivers `notification`, which must be a `SceneChanged`, and then runs the hook of its
    /// operation. Under a guard, gathers it instead, a composite op by op.
    void notify(const Notification& notification) override;

    [[nodiscard]] bool inCompositeNotification() const override;

    /// Begins a composite and loses one that is already open. `NotificationGuard` never loses one.
    void beginNotificationGuard() override;

    /// Delivers the composite that was begun, and then runs its hook.
    void endNotificationGuard() override;

protected:
    /// Run once per change that is delivered by itself, after the last observer. Changes gathered
    /// under a guard only reach the hook of the composite, so override that one too. By default do
    /// nothing.
    virtual void postNotifyObjectAdd(const ObjectAdd& notification);
    virtual void postNotifyObjectDelete(const ObjectDelete& notification);
    virtual void postNotifyObjectPathChange(const ObjectPathChange& notification);
    virtual void postNotifySubtreeInvalidate(const SubtreeInvalidate& notification);

    /// Runs once per composite of a guard. By default does nothing.
    virtual void postNotifySceneCompositeChange(const SceneCompositeNotification& notification);

private:
    std::unique_ptr<SceneCompositeNotification> _compositeNotification; ///< Null without a guard.
};

} // namespace Kiv_v4
