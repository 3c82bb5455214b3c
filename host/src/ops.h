#pragma once

#include <vector>

#include "kiv/sceneNotification.h"

namespace Kiv_v4::host::detail {

using Op = SceneCompositeNotification::Op;

/// The changes of a notification in order: of a composite its ops, otherwise the one change.
[[nodiscard]] inline std::vector<Op> opsOf(const SceneChanged& change)
{
    if (const auto* composite = dynamic_cast<const SceneCompositeNotification*>(&change)) {
        return {composite->begin(), composite->end()};
    }
    return {Op(change)};
}

/// Whether the item was renamed or moved and has its new path.
[[nodiscard]] inline bool hasMoved(const Op& op)
{
    return op.opType == SceneChanged::PathChanged && op.item &&
           (op.subOpType == ObjectPathChange::Renamed ||
            op.subOpType == ObjectPathChange::Reparented);
}

/// Whether the item at the path is no longer there. An announced deletion in a batch has already
/// happened.
[[nodiscard]] inline bool hasGone(const Op& op, bool isInBatch)
{
    return op.opType == SceneChanged::Deleted ? isInBatch || op.subOpType != ObjectDelete::PreDelete
                                              : op.opType == SceneChanged::PathChanged &&
                                                    op.subOpType == ObjectPathChange::PathRemoved;
}

/// Whether an item is at the path that was not there before.
[[nodiscard]] inline bool hasCome(const Op& op)
{
    return op.opType == SceneChanged::Added ||
           (op.opType == SceneChanged::PathChanged && op.subOpType == ObjectPathChange::PathAdded);
}

/// Whether `path` is that of the item at `ancestor` or of one under it. Unlike `startsWith`, this
/// distinguishes the scenes of two run-times whose items have the same names.
[[nodiscard]] inline bool isAtOrUnder(const Path& path, const Path& ancestor)
{
    if (path.size() < ancestor.size() || ancestor.empty()) {
        return false;
    }
    return path.size() == ancestor.size()
               ? path == ancestor
               : path.head(static_cast<int>(ancestor.size())) == ancestor;
}

/// Whether one of the path's segments is the run-time's.
[[nodiscard]] inline bool leadsThrough(const Path& path, Rtid runTimeId)
{
    for (std::size_t index = 0; index < path.nbSegments(); ++index) {
        if (path.segment(index).runTimeId() == runTimeId) {
            return true;
        }
    }
    return false;
}

} // namespace Kiv_v4::host::detail
