#include "gatewayObserver.h"

#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"

namespace Kiv_v4::assimp {

namespace {

bool isGatewayInto(Rtid nestedRunTimeId, const Path& path)
{
    if (!SceneSegmentHandler::isGateway(path)) {
        return false;
    }
    const auto parent = path.pop();
    const auto isTop = parent.nbSegments() < path.nbSegments(); // nobody above it can be asked
    return isTop || SceneSegmentHandler::findGatewayItems(parent, nestedRunTimeId).contains(path);
}

} // namespace

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
        move(op.path, op.item->path());
    } else if (op.opType == SceneChanged::Added) {
        resume(op.path);
    } else if (op.opType == SceneChanged::Deleted && op.subOpType == ObjectDelete::Destroyed) {
        _mounts->removeAll(op.path);
    } else if (op.opType == SceneChanged::Deleted && op.subOpType != ObjectDelete::PreDelete) {
        _mounts->park(op.path);
    }
}

// Observers that were called before this one may have looked under the gateways already, and found
// nothing: each gateway that has its file is announced.

void GatewayObserver::move(const Path& oldPath, const Path& newPath)
{
    for (const auto& gateway : _mounts->moveAll(oldPath, newPath)) {
        announceInvalidated(gateway);
    }
}

void GatewayObserver::resume(const Path& path)
{
    for (const auto& gateway : _mounts->parkedUnder(path)) {
        if (isGatewayInto(_mounts->runTimeId(), gateway)) {
            _mounts->resume(gateway);
            announceInvalidated(gateway);
        }
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
