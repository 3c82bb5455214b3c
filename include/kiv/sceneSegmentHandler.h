#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

class Path;
class Selection;

/// Finds the gateways in a run-time's scene. A gateway is an item under which the items of another
/// run-time begin.
class KIV_EXPORT SceneSegmentHandler
{
public:
    using Ptr = std::shared_ptr<SceneSegmentHandler>;

    /// The handler of a run-time; null if it has none.
    [[nodiscard]] static Ptr sceneSegmentHandler(Rtid runTimeId);

    /// Whether the item at `path` is a gateway; false if its run-time has no such handler.
    [[nodiscard]] static bool isGateway(const Path& path);

    /// The gateways under `path`, without `path` itself, in the run-time of `path`; none if that
    /// has no such handler.
    [[nodiscard]] static Selection findGatewayItems(const Path& path);

    /// The same, but only the gateways that lead into the run-time `nestedRuntimeId`.
    [[nodiscard]] static Selection findGatewayItems(const Path& path, Rtid nestedRuntimeId);

    SceneSegmentHandler();
    SceneSegmentHandler(const SceneSegmentHandler&) = delete;
    SceneSegmentHandler& operator=(const SceneSegmentHandler&) = delete;
    virtual ~SceneSegmentHandler();

    /// Whether the item at `path`, a path of this run-time, is a gateway.
    [[nodiscard]] virtual bool isGatewayItem(const Path& path) = 0;

    /// The gateways under `path`, a path of this run-time, in the order of the hierarchy. Without
    /// `path` itself, so that a search that continues from each of them ends; items behind the
    /// gateways are not searched.
    [[nodiscard]] virtual Selection gatewayItems(const Path& path) = 0;

    /// The same, but only the gateways that lead into the run-time `nestedRuntimeId`.
    [[nodiscard]] virtual Selection gatewayItems(const Path& path, Rtid nestedRuntimeId) = 0;
};

} // namespace Kiv_v4
