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

/// The one subject through which run-times announce what happens to the scene's structure: objects
/// added, deleted, renamed, moved, subtrees to be read anew. Observers receive the notifications of
/// `sceneNotification.h`.
///
///     Scene::initializeInstance(std::make_shared<Scene>()); // the host, at start-up
///     Scene::instance().addObserver(outliner);              // the host
///     Scene::instance().notify(ObjectAdd(item));            // a run-time, after the change
///
/// A `NotificationGuard` on the scene gathers the changes of a batch; observers receive one
/// `SceneCompositeNotification` when it closes, even if nothing was gathered.
///
/// A host that has work to do after all observers have seen a change installs a class derived from
/// this one that overrides the hooks `postNotify...`. An exception that a hook throws reaches the
/// caller of `notify`; when a guard closes, that terminates the process (`NotificationGuard`).
///
/// **The installed scene decides.** Whether notifications are gathered, into which composite, and
/// whose hooks run, is decided on the installed scene, also for a `Scene` object that is not
/// installed. Such an object is of little use but to deliver to observers of its own.
///
/// **Lifetime.** The installed scene lives until it is cleared, at the latest until the library is
/// unloaded. A host whose scene or whose observers live in a plug-in clears it before the plug-in
/// goes. It must not be cleared from inside a notification.
class KIV_EXPORT Scene : public Subject
{
public:
    using Ptr = std::shared_ptr<Scene>;

    /// Installs the scene of the process or, with null, clears it. Throws `std::invalid_argument`,
    /// and keeps the installed scene, when there is one and `scene` is not null.
    static void initializeInstance(const std::shared_ptr<Scene>& scene);

    /// The installed scene. There must be one.
    [[nodiscard]] static Scene& instance();

    /// Whether a scene is installed: what a run-time that also works without a host asks first.
    [[nodiscard]] static bool hasInstance();

    Scene();
    ~Scene() override;

    /// Delivers `notification`, which must be a `SceneChanged`, and then runs the hook of its
    /// operation. Under a guard, gathers it instead; a composite is gathered op by op.
    void notify(const Notification& notification) override;

    [[nodiscard]] bool inCompositeNotification() const override;

    /// Begins a composite; one that is open already is lost. See `NotificationGuard`, which never
    /// loses one.
    void beginNotificationGuard() override;

    /// Delivers the composite begun before, and then runs its hook.
    void endNotificationGuard() override;

protected:
    /// Runs once per change that is delivered by itself, after the last observer. What was gathered
    /// under a guard comes to the hook of the composite alone, so override that one too. By default
    /// does nothing.
    virtual void postNotifyObjectAdd(const ObjectAdd& notification);
    virtual void postNotifyObjectDelete(const ObjectDelete& notification);
    virtual void postNotifyObjectPathChange(const ObjectPathChange& notification);
    virtual void postNotifySubtreeInvalidate(const SubtreeInvalidate& notification);

    /// Only for the composite of a guard.
    virtual void postNotifySceneCompositeChange(const SceneCompositeNotification& notification);

private:
    std::unique_ptr<SceneCompositeNotification> _compositeNotification; ///< Null without a guard.
};

} // namespace Kiv_v4
