#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/path.h"

namespace Kiv_v4 {

/// Tells which path of the host's own scene corresponds to an item of a run-time, and back: for
/// run-times whose items the host also shows as items of its own, such as stand-ins for them.
///
/// The library itself does not ask it. Hosts and tools fetch a run-time's handler with
/// `RunTimeMgr::pathMappingHandler`.
class KIV_EXPORT PathMappingHandler
{
public:
    using Ptr = std::shared_ptr<PathMappingHandler>;

    PathMappingHandler();
    PathMappingHandler(const PathMappingHandler&) = delete;
    PathMappingHandler& operator=(const PathMappingHandler&) = delete;
    virtual ~PathMappingHandler();

    /// Where the host has the item at `path`, a path of this run-time; the empty path when the host
    /// has none for it.
    [[nodiscard]] virtual Path hostPath(const Path& path) const = 0;

    /// The path of this run-time that the host has at `hostPath`; the empty path when there is
    /// none.
    [[nodiscard]] virtual Path runTimePath(const Path& hostPath) const = 0;
};

} // namespace Kiv_v4
