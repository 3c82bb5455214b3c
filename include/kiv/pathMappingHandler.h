#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/path.h"

namespace Kiv_v4 {

/// Maps the paths of a run-time's items to paths of the host's own scene, and back: for run-times
/// whose items the host also shows as items of its own, such as stand-ins.
///
/// The library itself does not use it. Hosts and tools fetch a run-time's handler with
/// `RunTimeMgr::pathMappingHandler`.
class KIV_EXPORT PathMappingHandler
{
public:
    using Ptr = std::shared_ptr<PathMappingHandler>;

    PathMappingHandler();
    PathMappingHandler(const PathMappingHandler&) = delete;
    PathMappingHandler& operator=(const PathMappingHandler&) = delete;
    virtual ~PathMappingHandler();

    /// The host's path for the item at `path`, a path of this run-time; the empty path if the host
    /// has none.
    [[nodiscard]] virtual Path hostPath(const Path& path) const = 0;

    /// The path of this run-time for the host's item at `hostPath`; the empty path if there is
    /// none.
    [[nodiscard]] virtual Path runTimePath(const Path& hostPath) const = 0;
};

} // namespace Kiv_v4
