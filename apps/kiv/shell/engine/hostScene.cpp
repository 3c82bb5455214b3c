#include "shell/engine/hostScene.h"

#include <exception>
#include <utility>

#include "terminal/diagnostics.h"

namespace app::shell {

using namespace Kiv_v4;
using Op = SceneCompositeNotification::Op;

HostScene::HostScene(Work work) : _work(std::move(work)) {}

HostScene::~HostScene() = default;

void HostScene::postNotifyObjectAdd(const ObjectAdd& notification)
{
    doWork(Op(notification));
}

void HostScene::postNotifyObjectDelete(const ObjectDelete& notification)
{
    doWork(Op(notification));
}

void HostScene::postNotifyObjectPathChange(const ObjectPathChange& notification)
{
    doWork(Op(notification));
}

void HostScene::postNotifySubtreeInvalidate(const SubtreeInvalidate& notification)
{
    doWork(Op(notification));
}

void HostScene::postNotifySceneCompositeChange(const SceneCompositeNotification& notification)
{
    for (const auto& change : notification) {
        doWork(change);
    }
}

void HostScene::doWork(const Op& change)
{
    try { // The change is made: what fails here must not look like a failure of it.
        _work(change);
    } catch (const std::exception& error) {
        complain("following the scene", error.what());
    }
}

} // namespace app::shell
