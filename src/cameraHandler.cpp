#include "kiv/cameraHandler.h"

#include <unordered_set>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/path.h"
#include "kiv/runTimeMgr.h"
#include "kiv/sceneSegmentHandler.h"

#include "detail/dispatch.h"

namespace Kiv_v4 {

namespace {

/// The items with which other run-times begin under a gateway, in order.
SceneItemList mountedAt(const SceneItem::Ptr& gateway)
{
    const auto hierarchy = Hierarchy::hierarchy(gateway);
    auto items = hierarchy ? hierarchy->children() : SceneItemList();
    items.remove_if([&gateway](const auto& child) {
        return !child || child->runTimeId() == gateway->runTimeId();
    });
    return items;
}

/// Searches each path once: a gateway under an earlier gateway is found again.
class CameraSearch
{
public:
    /// The cameras at and under the path, those behind it if it is a gateway, and those of the
    /// gateways under it.
    void search(const Path& path, bool isGateway)
    {
        if (!_searched.insert(path).second) {
            return;
        }
        for (const auto& camera : CameraHandler::find(path)) {
            _found.append(camera);
        }
        searchBehind(path, isGateway);
        for (const auto& gateway : SceneSegmentHandler::findGatewayItems(path)) {
            search(gateway->path(), true);
        }
    }

    [[nodiscard]] Selection found() && { return std::move(_found); }

private:
    /// A run-time that fails behind a gateway hides only its own cameras.
    void searchBehind(const Path& path, bool isGateway)
    {
        if (!RunTimeMgr::instance().hierarchyHandler(path.runTimeId())) {
            return;
        }
        try {
            detail::logAndRethrow("findAll", "src/cameraHandler", [&] {
                if (isGateway || SceneSegmentHandler::isGateway(path)) {
                    for (const auto& item : mountedAt(Hierarchy::createItem(path))) {
                        search(item->path(), false);
                    }
                }
            });
        } catch (...) {
            // Logged; the search continues.
        }
    }

    Selection _found;
    std::unordered_set<Path> _searched;
};

} // namespace

CameraHandler::CameraHandler() = default;

CameraHandler::~CameraHandler() = default;

Selection CameraHandler::find(const Path& path)
{
    const auto handler = RunTimeMgr::instance().cameraHandler(path.runTimeId());
    return handler ? handler->findCameras(path) : Selection();
}

Selection CameraHandler::findAll(const Path& path)
{
    CameraSearch search;
    search.search(path, false);
    return std::move(search).found();
}

} // namespace Kiv_v4
