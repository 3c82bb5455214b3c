#include "gatewayObserver.h"

#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"

namespace Kiv_v4::assimp {

GatewayObserver::GatewayObserver(std::shared_ptr<Mounts> mounts) : _mounts(std::move(mounts)) {}

void GatewayObserver::operator()(const Notification& notification)
{
    if (const auto* all = dynamic_cast<const SceneCompositeNotification*>(&notification)) {
        for (const auto& op : *all) {
            apply(op);
        }
    } else if (const auto* one = dynamic_cast<const SceneChanged*>(&notification)) {
        apply(SceneCompositeNotification::Op(*one));
    }
}

void GatewayObserver::apply(const SceneCompositeNotification::Op& op)
{
    const auto moved =
        op.opType == SceneChanged::PathChanged &&
        (op.subOpType == ObjectPathChange::Renamed || op.subOpType == ObjectPathChange::Reparented);
    if (moved && op.item) {
        _mounts->moveAll(op.path, op.item->path());
    }
}

void announceInvalidated(const Path& gateway)
{
    // A gateway of an unknown run-time has no item to announce.
    if (!Scene::hasInstance() || !RunTimeMgr::instance().hierarchyHandler(gateway.runTimeId())) {
        return;
    }
    if (const auto item = Hierarchy::createItem(gateway)) {
        Scene::instance().notify(SubtreeInvalidate(item));
    }
}

} // namespace Kiv_v4::assimp
