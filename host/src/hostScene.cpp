#include "kiv/host/hostScene.h"

#include <algorithm>
#include <deque>
#include <exception>
#include <utility>

#include "kiv/host/runTimeWatch.h"
#include "kiv/log.h"

#include "ops.h"
#include "scopedFlag.h"
#include "selectionFollower.h"

namespace Kiv_v4::host {

using detail::Op;
using detail::SelectionFollower;

struct HostScene::State
{
    void leave(Rtid runTimeId)
    {
        for (const auto& follower : followers) {
            follower->leave(runTimeId);
        }
    }

    std::deque<std::shared_ptr<const SceneChanged>> waiting;
    bool isDelivering = false;
    std::vector<std::shared_ptr<SelectionFollower>> followers;
    const RunTimeWatch watch{[this](RunTimeEvent event, Rtid runTimeId) {
        if (event == RunTimeEvent::Leaving) {
            leave(runTimeId);
        }
    }};
};

namespace {

using Copy = std::shared_ptr<const SceneChanged>;

Copy copyOfDelete(const Op& op)
{
    switch (op.subOpType) {
    case ObjectDelete::PostDelete:
        return std::make_shared<ObjectPostDelete>(op.item);
    case ObjectDelete::PreDelete:
        return std::make_shared<ObjectPreDelete>(op.item);
    case ObjectDelete::Destroyed:
        return std::make_shared<ObjectDestroyed>(op.path);
    default:
        return std::make_shared<ObjectDelete>(op.path);
    }
}

Copy copyOfPathChange(const Op& op)
{
    switch (op.subOpType) {
    case ObjectPathChange::Renamed:
        return std::make_shared<ObjectRename>(op.item, op.path);
    case ObjectPathChange::Reparented:
        return std::make_shared<ObjectReparent>(op.item, op.path);
    case ObjectPathChange::PathAdded:
        return std::make_shared<ObjectPathAdd>(op.item);
    case ObjectPathChange::PathRemoved:
        return std::make_shared<ObjectPathRemove>(op.path);
    default:
        return std::make_shared<ObjectPathChange>();
    }
}

/// A copy of the notification, for delivery after the original was destroyed.
Copy copyOf(const SceneChanged& change)
{
    switch (change.opType()) {
    case SceneChanged::Added:
        return std::make_shared<ObjectAdd>(Op(change).item);
    case SceneChanged::Deleted:
        return copyOfDelete(Op(change));
    case SceneChanged::PathChanged:
        return copyOfPathChange(Op(change));
    case SceneChanged::SubtreeInvalidated:
        return std::make_shared<SubtreeInvalidate>(Op(change).item);
    case SceneChanged::Composite:
        break;
    }
    auto composite = std::make_shared<SceneCompositeNotification>();
    for (const auto& op : detail::opsOf(change)) {
        composite->appendOp(op);
    }
    return composite;
}

/// Does the work after a change and logs its exceptions: the change must not look as if it had
/// failed.
template <class Work>
void following(Work work)
{
    try {
        work();
    } catch (const std::exception& error) {
        log("notify", "host/src/hostScene", __LINE__,
            std::string("Following the scene threw ") + error.what() + "\n");
    }
}

} // namespace

HostScene::HostScene() : _state(std::make_unique<State>()) {}

HostScene::~HostScene() = default;

void HostScene::notify(const Notification& notification)
{
    const auto& change = static_cast<const SceneChanged&>(notification);
    if (instance().inCompositeNotification()) {
        Scene::notify(change); // which gathers
        return;
    }
    if (_state->isDelivering) {
        _state->waiting.push_back(copyOf(change));
        return;
    }
    const detail::ScopedFlag delivering(_state->isDelivering);
    std::exception_ptr first;
    const auto deliverOrNote = [&](const SceneChanged& next) {
        try {
            deliver(next);
        } catch (...) {
            first = first ? first : std::current_exception();
        }
    };
    deliverOrNote(change);
    while (!_state->waiting.empty()) {
        const auto next = std::move(_state->waiting.front());
        _state->waiting.pop_front();
        deliverOrNote(*next);
    }
    if (first) {
        std::rethrow_exception(first);
    }
}

void HostScene::deliver(const SceneChanged& change)
{
    following([&] { Scene::notify(change); });
    if (instance().inCompositeNotification()) {
        return; // gathered by a guard that an observer opened and left open
    }
    const auto ops = detail::opsOf(change);
    std::erase_if(_state->followers, [](const auto& each) { return !each->selection(); });
    const auto followers = _state->followers; // a copy, since their observers may let others follow
    for (const auto& follower : followers) {
        following([&] { follower->follow(ops, change.opType() == SceneChanged::Composite); });
    }
    following([&] { postDelivery(change); });
}

void HostScene::follow(const std::shared_ptr<Selection>& selection, Gone gone)
{
    auto& followers = _state->followers;
    const auto known = std::find_if(followers.begin(), followers.end(), [&](const auto& follower) {
        return follower->selection() == selection;
    });
    if (known != followers.end()) {
        (*known)->setGone(gone);
    } else {
        followers.push_back(std::make_shared<SelectionFollower>(selection, gone));
    }
}

bool HostScene::unfollow(const std::shared_ptr<Selection>& selection)
{
    return std::erase_if(_state->followers, [&](const auto& follower) {
               return follower->selection() == selection;
           }) != 0;
}

void HostScene::postDelivery(const SceneChanged& /*change*/) {}

void HostScene::postNotifySceneCompositeChange(const SceneCompositeNotification& /*change*/) {}

} // namespace Kiv_v4::host
