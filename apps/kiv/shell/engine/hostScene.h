#pragma once

#include <functional>

#include "kiv/scene.h"
#include "kiv/sceneNotification.h"

namespace app::shell {

/// The installed scene of the shell, which has work of its own to do once all observers have seen a
/// change: what follows the scene (the current item, the selections) must find every run-time up to
/// date, and observers come in no certain order.
class HostScene : public Kiv_v4::Scene
{
public:
    using Work = std::function<void(const Kiv_v4::SceneCompositeNotification::Op&)>;

    /// `work` is done for each change, in order.
    explicit HostScene(Work work);
    ~HostScene() override;

protected:
    void postNotifyObjectAdd(const Kiv_v4::ObjectAdd& notification) override;
    void postNotifyObjectDelete(const Kiv_v4::ObjectDelete& notification) override;
    void postNotifyObjectPathChange(const Kiv_v4::ObjectPathChange& notification) override;
    void postNotifySubtreeInvalidate(const Kiv_v4::SubtreeInvalidate& notification) override;
    void
    postNotifySceneCompositeChange(const Kiv_v4::SceneCompositeNotification& notification) override;

private:
    void doWork(const Kiv_v4::SceneCompositeNotification::Op& change);

    const Work _work;
};

} // namespace app::shell
