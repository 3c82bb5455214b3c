#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/scene.h"

namespace Kiv_v4 {
class SceneChanged;
class Selection;
} // namespace Kiv_v4

namespace Kiv_v4::host {

/// The scene that a host installs: it delivers in causal order, and lets selections follow.
///
///     const auto scene = std::make_shared<host::HostScene>();
///     Scene::initializeInstance(scene);
///     scene->follow(GlobalSelection::get(), host::HostScene::Gone::ComesBack);
///
/// **Order.** What observers announce from inside a notification is delivered after it: every
/// observer hears of all changes in the same order, and may keep the identity of rows by it. (A
/// plain `Scene` delivers the inner one first, so that observers late in the order hear the two in
/// reverse.) Such a delayed notification is a copy of the class that `sceneNotification.h` has for
/// it; as under a guard, an item that is about to be deleted is gone by then.
///
/// **After the observers** of a change the selections follow, then `postDelivery` runs, then the
/// next change is delivered. What throws there, or in the hooks of `Scene`, is written to the log:
/// the change is made, and must not look as if it had failed. An exception of an observer that does
/// not derive from `std::exception` reaches the caller once all is delivered.
class KIV_EXPORT HostScene : public Scene
{
public:
    /// What a selection does with items that are deleted.
    enum class Gone {
        Dropped,   ///< Lets go of them.
        ComesBack, ///< The same; but if they are added again, as undo does, before anybody else
                   ///< changed the selection, they are selected again, in their places. Only for
                   ///< observable selections: others drop them.
        Kept       ///< Keeps them under the paths that they had, to which undo brings them back.
    };

    HostScene();
    ~HostScene() override;

    void notify(const Notification& notification) override;

    /// Lets the selection have its items where they are now, in their places, when these or items
    /// above them are renamed, moved or deleted. An observable one announces what this changes as
    /// one composite, and nothing when nothing changes. The selection is held weakly. A selection
    /// that follows already does so with the new `gone`.
    ///
    /// **Cost** of following a change: proportional to the number of selected items at and under
    /// the changed path.
    void follow(const std::shared_ptr<Selection>& selection, Gone gone);

    /// False when the selection did not follow.
    bool unfollow(const std::shared_ptr<Selection>& selection);

protected:
    /// Runs once per delivered change, composite or not, after the observers and the selections. By
    /// default does nothing.
    virtual void postDelivery(const SceneChanged& change);

private:
    struct State;

    /// Not in causal order: `postDelivery` is.
    void postNotifySceneCompositeChange(const SceneCompositeNotification& change) final;
    KIV_HIDDEN void deliver(const SceneChanged& change);

    const std::unique_ptr<State> _state;
};

} // namespace Kiv_v4::host
