#include "mountState.h"

#include <algorithm>
#include <exception>
#include <map>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/log.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"

namespace Kiv_v4::kit {

namespace {

/// Announces a change of the items under the gateway.
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

} // namespace

class MountTable::SceneObserver : public Observer
{
public:
    explicit SceneObserver(std::weak_ptr<State> state) : _state(std::move(state)) {}

    void operator()(const Notification& notification) override
    {
        if (const auto state = _state.lock()) {
            state->receive(notification);
        }
    }

private:
    const std::weak_ptr<State> _state;
};

/// Finds out whether a path is a gateway into the run-time; valid as long as nothing changes.
class MountTable::State::Gateways
{
public:
    explicit Gateways(Rtid runTimeId) : _runTimeId(runTimeId) {}

    /// False if the gateway's run-time throws, which is logged.
    bool contains(const Path& path)
    {
        try {
            const auto target = GatewayOwner::target(path);
            return target ? *target == _runTimeId : isListed(path);
        } catch (const std::exception& thrown) {
            log("Mounts", "kit/src/mountState", __LINE__,
                "The run-time of the gateway '" + PathString::string(path) + "' threw " +
                    thrown.what());
        } catch (...) {
            log("Mounts", "kit/src/mountState", __LINE__,
                "The run-time of the gateway '" + PathString::string(path) + "' threw");
        }
        return false;
    }

private:
    bool isListed(const Path& path)
    {
        if (!SceneSegmentHandler::isGateway(path)) {
            return false;
        }
        const auto parent = path.pop();
        if (parent.nbSegments() < path.nbSegments()) {
            return true; // no item above it can be queried
        }
        const auto known = _underParents.try_emplace(parent);
        if (known.second) {
            known.first->second = SceneSegmentHandler::findGatewayItems(parent, _runTimeId);
        }
        return known.first->second.contains(path);
    }

    const Rtid _runTimeId;
    std::map<Path, Selection, HierarchyOrder> _underParents;
};

MountTable::State::State(Rtid runTimeId, char separator)
    : _runTimeId(runTimeId), _separator(separator)
{}

void MountTable::State::close()
{
    for (const auto& mount : shown()) {
        mount->_gateway = {};
    }
    for (const auto& path : _parked.atOrBelow({})) {
        for (const auto& mount : *_parked.find(path)) {
            mount->_parkedAt = {};
        }
    }
    _shown.clear();
    _parked.clear();
    _sceneObserver.reset(); // commands and interface objects may keep the rest
    _isOpen = false;
}

void MountTable::State::add(const Mount::Ptr& mount, const Path& gateway)
{
    if (!_isOpen) {
        throw std::runtime_error("The run-time of the mount under '" + PathString::string(gateway) +
                                 "' is no longer registered.");
    }
    if (mount->isShown()) {
        throw std::invalid_argument("The mount is already shown under '" +
                                    PathString::string(mount->gateway()) + "'.");
    }
    requireFree(gateway);
    remove(*mount); // if it is parked
    show(mount, gateway);
    if (!_sceneObserver) {
        _sceneObserver = std::make_shared<SceneObserver>(weak_from_this());
    }
    if (Scene::hasInstance()) {
        Scene::instance().addObserver(_sceneObserver);
    }
    GatewayOwner::itemAdded(gateway);
    announceInvalidated(gateway);
}

bool MountTable::State::remove(const Path& gateway)
{
    if (const auto* found = _shown.find(gateway)) {
        const auto mount = *found;
        remove(*mount);
        return true;
    }
    return takeParked(gateway) != nullptr;
}

void MountTable::State::remove(Mount& mount)
{
    if (const auto gateway = mount.gateway(); !gateway.empty()) {
        hide(gateway);
        GatewayOwner::itemRemoved(gateway);
        announceInvalidated(gateway);
    } else if (auto* parked = _parked.find(mount._parkedAt)) {
        std::erase_if(*parked, [&](const auto& known) { return known.get() == &mount; });
        if (parked->empty()) {
            _parked.erase(mount._parkedAt);
        }
        mount._parkedAt = {};
    }
}

bool MountTable::State::move(const Path& gateway, const Path& newGateway)
{
    if (!_shown.find(gateway)) {
        return false;
    }
    if (newGateway != gateway) {
        requireFree(newGateway);
        show(hide(gateway), newGateway);
    }
    return true;
}

Mount::Ptr MountTable::State::find(const Path& gateway)
{
    askAboutLeaving(gateway);
    const auto* found = _shown.find(gateway);
    return found ? *found : nullptr;
}

Mount::Ptr MountTable::State::at(const Path& path)
{
    if (path.empty() || _shown.empty()) {
        return nullptr;
    }
    const auto segment = path.segment(path.nbSegments() - 1);
    return segment.runTimeId() == _runTimeId && segment.separator() == _separator
               ? find(path.popSegment())
               : nullptr;
}

std::vector<Mount::Ptr> MountTable::State::shown()
{
    std::vector<Mount::Ptr> mounts;
    for (const auto& gateway : _shown.atOrBelow({})) {
        mounts.push_back(*_shown.find(gateway));
    }
    return mounts;
}

void MountTable::State::itemAdded(const Path& path)
{
    Changes changes;
    resumeUnder(path, changes);
    keepAtGateways(changes);
}

void MountTable::State::itemRemoved(const Path& path)
{
    parkUnder(path);
}

void MountTable::State::itemMoved(const Path& oldPath, const Path& newPath)
{
    Changes changes;
    moveUnder(oldPath, newPath, changes);
}

/// The changes of a composite have all happened: only after the last one can a place be checked for
/// being a gateway. Nothing is announced before every mount is in its place, since observers may
/// mount and unmount.
void MountTable::State::receive(const Notification& notification)
{
    parkLeft(_leaving);
    Changes changes;
    forEachOp(notification, [&](const auto& op) { apply(op, changes); });
    if (dynamic_cast<const SceneCompositeNotification*>(&notification)) {
        parkLeft(changes.leaving);
    } else {
        _leaving.insert(_leaving.end(), changes.leaving.begin(), changes.leaving.end());
    }
    keepAtGateways(changes);
    std::unordered_set<Mount::Ptr> announced;
    for (const auto& mount : changes.moved) {
        if (mount->isShown() && announced.insert(mount).second) {
            announceInvalidated(mount->gateway());
        }
    }
}

void MountTable::State::apply(const SceneCompositeNotification::Op& op, Changes& changes)
{
    const auto isDestroyed =
        op.opType == SceneChanged::Deleted && op.subOpType == ObjectDelete::Destroyed;
    if (isDestroyed) { // no owner announces it, and another item may be shown there
        forgetUnder(op.path);
    }
    if (GatewayOwner::tells(op.path.runTimeId())) {
        return;
    }
    if (op.opType == SceneChanged::PathChanged && op.item &&
        (op.subOpType == ObjectPathChange::Renamed ||
         op.subOpType == ObjectPathChange::Reparented)) {
        moveUnder(op.path, op.item->path(), changes);
    } else if (op.opType == SceneChanged::Added) {
        resumeUnder(op.path, changes);
    } else if (op.opType == SceneChanged::Deleted && op.subOpType == ObjectDelete::PreDelete) {
        changes.leaving.push_back(op.path);
    } else if (op.opType == SceneChanged::Deleted) {
        parkUnder(op.path);
    }
    if (isDestroyed) {
        forgetUnder(op.path);
    }
}

void MountTable::State::requireFree(const Path& gateway)
{
    if (gateway.empty()) {
        throw std::invalid_argument("Nothing can be mounted under the empty path '" +
                                    gateway.string() + "'.");
    }
    if (find(gateway)) {
        throw std::invalid_argument("A mount is already shown under '" +
                                    PathString::string(gateway) + "'.");
    }
}

void MountTable::State::show(const Mount::Ptr& mount, const Path& gateway)
{
    _shown[gateway] = mount;
    mount->_gateway = gateway;
}

Mount::Ptr MountTable::State::hide(const Path& gateway)
{
    auto mount = std::move(*_shown.find(gateway));
    _shown.erase(Path(gateway)); // a copy, since it may be the mount's own
    mount->_gateway = {};
    return mount;
}

void MountTable::State::park(const Mount::Ptr& mount, const Path& gateway)
{
    _parked[gateway].push_back(mount);
    mount->_parkedAt = gateway;
}

Mount::Ptr MountTable::State::takeParked(const Path& gateway)
{
    auto* parked = _parked.find(gateway);
    if (!parked) {
        return nullptr;
    }
    auto mount = parked->back();
    parked->pop_back();
    if (parked->empty()) {
        _parked.erase(gateway);
    }
    mount->_parkedAt = {};
    return mount;
}

void MountTable::State::parkUnder(const Path& path)
{
    for (const auto& gateway : _shown.atOrBelow(path)) {
        park(hide(gateway), gateway);
    }
    std::erase_if(_leaving, [&](const auto& leaving) { return leaving.isAtOrBelow(path); });
}

/// If a mount is in the way of another, it came back too early and is parked.
void MountTable::State::moveUnder(const Path& oldPath, const Path& newPath, Changes& changes)
{
    std::vector<std::pair<Mount::Ptr, Path>> moved;
    for (const auto& gateway : _shown.atOrBelow(oldPath)) {
        moved.emplace_back(hide(gateway), gateway.reparent(oldPath, newPath));
    }
    for (const auto& [mount, gateway] : moved) {
        if (_shown.find(gateway)) {
            park(hide(gateway), gateway);
        }
        show(mount, gateway);
        changes.moved.push_back(mount);
    }
}

void MountTable::State::resumeUnder(const Path& path, Changes& changes)
{
    for (const auto& gateway : _parked.atOrBelow(path)) {
        if (!_shown.find(gateway)) {
            changes.returned.push_back({takeParked(gateway), gateway});
            show(changes.returned.back().mount, gateway);
        }
    }
}

void MountTable::State::forgetUnder(const Path& path)
{
    for (const auto& gateway : _parked.atOrBelow(path)) {
        while (takeParked(gateway)) {
        }
    }
}

void MountTable::State::keepAtGateways(Changes& changes)
{
    std::vector<Mount::Ptr> kept;
    Gateways gateways(_runTimeId);
    for (const auto& [mount, parkedAt] : changes.returned) {
        if (mount->isShown() && gateways.contains(mount->gateway())) {
            kept.push_back(mount);
        } else if (mount->isShown()) {
            park(hide(mount->gateway()), parkedAt);
        }
    }
    for (const auto& mount : kept) {
        changes.moved.push_back(mount);
        GatewayOwner::itemAdded(mount->gateway());
    }
}

void MountTable::State::parkLeft(const std::vector<Path>& leaving)
{
    Gateways gateways(_runTimeId);
    for (const auto& path : std::vector<Path>(leaving)) {
        for (const auto& gateway : _shown.atOrBelow(path)) {
            if (!gateways.contains(gateway)) {
                park(hide(gateway), gateway);
            }
        }
    }
    std::erase_if(_leaving, [&](const auto& path) { return _shown.atOrBelow(path).empty(); });
}

/// Owners that are queried may look for the mount in turn.
void MountTable::State::askAboutLeaving(const Path& gateway)
{
    const auto isLeaving = [&](const auto& path) { return gateway.isAtOrBelow(path); };
    if (_isAsking || std::none_of(_leaving.begin(), _leaving.end(), isLeaving) ||
        !_shown.find(gateway)) {
        return;
    }
    _isAsking = true;
    const auto isThere = Gateways(_runTimeId).contains(gateway);
    _isAsking = false;
    if (!isThere && _shown.find(gateway)) {
        park(hide(gateway), gateway);
    }
}

} // namespace Kiv_v4::kit
