#include "kiv/subtreeObserver.h"

#include <utility>

namespace Kiv_v4 {

SubtreeObserver::SubtreeObserver(Path top, Work work) : _top(std::move(top)), _work(std::move(work))
{}

SubtreeObserver::~SubtreeObserver() = default;

void SubtreeObserver::operator()(const Notification& notification)
{
    const auto* change = dynamic_cast<const SceneChanged*>(&notification);
    // Only path changes have an item whose path differs from `changedPath`.
    const auto mayBringIn = change && change->opType() == SceneChanged::PathChanged;
    const auto isInBatch = change && change->opType() == SceneChanged::Composite;
    forEachOp(
        notification, [&](const Path& path) { return mayBringIn || isInBatch || isAbout(path); },
        [this](const auto& op) {
            if (isAbout(op.path) || (op.item && op.item->path().isAtOrBelow(_top))) {
                _work(op);
            }
        });
}

bool SubtreeObserver::isAbout(const Path& path) const noexcept
{
    return path.isAtOrBelow(_top) || (!path.empty() && _top.isAtOrBelow(path));
}

} // namespace Kiv_v4
