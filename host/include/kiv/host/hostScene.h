#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/scene.h"

namespace Kiv_v4 {
class SceneChanged;
class Selection;
} // namespace Kiv_v4

namespace Kiv_v4::host {

/// A scene for hosts to install: it delivers in causal order, and selections can follow it.
///
///     const auto scene = std::make_shared<host::HostScene>();
///     Scene::initializeInstance(scene);
///     scene->follow(GlobalSelection::get(), host::HostScene::Gone::ComesBack);
///
/// **Order.** A change announced from inside a notification is delivered after that notification:
/// every observer receives all changes in the same order, and may rely on it to keep the identity
/// of rows. (A plain `Scene` delivers the inner one first, so observers late in the order receive
/// the two in reverse.) Such a delayed notification is a copy of the class that
/// `sceneNotification.h` has for it; as under a guard, an item that was about to be deleted no
/// longer exists by then.
///
/// **After the observers** of a change the selections follow, then `postDelivery` runs, then the
/// next change is delivered. Exceptions there, or in the hooks of `Scene`, are written to the log:
/// the change is made, and must not look as if it had failed. An exception of an observer that does
/// not derive from `std::exception` passes through once everything is delivered.
class KIV_EXPORT HostScene : public Scene
{
public:
    /// The handling of deleted items in a selection.
    enum class Gone {
        Dropped,   ///< The selection releases them.
        ComesBack, ///< The same; but if they are added again, as by undo, before other code
                   ///< changed the selection, they are selected again, in their places. Only for
                   ///< observable selections: others drop them.
        Kept ///< The selection keeps them under their former paths, to which undo brings them back.
    };

    HostScene();
    ~HostScene() override;

    void notify(const Notification& notification) override;

    /// Makes the selection follow its items, in their places, when they or their ancestors are
    /// renamed, moved or deleted. An observable selection announces the changes as one composite,
    /// and nothing if nothing changes. Holds the selection weakly. A selection that already follows
    /// gets the new `gone`.
    ///
    /// **Cost** of following a change: proportional to the number of selected items at and under
    /// the changed path.
    void follow(const std::shared_ptr<Selection>& selection, Gone gone);

    /// Returns false if the selection did not follow.
    bool unfollow(const std::shared_ptr<Selection>& selection);

protected:
    /// Runs once per delivered change, composite or not, after the observers and the selections. By
    /// default does nothing.
    virtual void postDelivery(const SceneChanged& change);

private:
    struct KIV_HIDDEN State;

    /// Not in causal order; use `postDelivery`.
    void postNotifySceneCompositeChange(const SceneCompositeNotification& change) final;
    KIV_HIDDEN void deliver(const SceneChanged& change);

    const std::unique_ptr<State> _state;
};

} // namespace Kiv_v4::host
