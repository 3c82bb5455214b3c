#include "kiv/host/inspection.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <unistd.h>

#include "kiv/attributes.h"
#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/host/outline.h"
#include "kiv/object3d.h"
#include "kiv/observableSelection.h"
#include "kiv/pathComponent.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"

namespace Kiv_v4::host {

namespace {

/// A kind of handler.
struct InstalledKind
{
    const char* name;
    bool (*isInstalled)(Rtid runTimeId);
};

template <auto handler>
bool has(Rtid runTimeId)
{
    return (RunTimeMgr::instance().*handler)(runTimeId) != nullptr;
}

constexpr InstalledKind kKinds[] = {
    {"hierarchy", has<&RunTimeMgr::hierarchyHandler>},
    {"transform3d", has<&RunTimeMgr::transform3dHandler>},
    {"sceneItemOps", has<&RunTimeMgr::sceneItemOpsHandler>},
    {"attributes", has<&RunTimeMgr::attributesHandler>},
    {"object3d", has<&RunTimeMgr::object3dHandler>},
    {"material", has<&RunTimeMgr::materialHandler>},
    {"contextOps", has<&RunTimeMgr::contextOpsHandler>},
    {"uiInfo", has<&RunTimeMgr::uiInfoHandler>},
    {"camera", has<&RunTimeMgr::cameraHandler>},
    {"light", has<&RunTimeMgr::lightHandler>},
    {"pathMapping", has<&RunTimeMgr::pathMappingHandler>},
    {"nodeDef", has<&RunTimeMgr::nodeDefHandler>},
    {"sceneSegment", has<&RunTimeMgr::sceneSegmentHandler>},
    {"connection", has<&RunTimeMgr::connectionHandler>},
    {"uiNodeGraphNode", has<&RunTimeMgr::uiNodeGraphNodeHandler>},
    {"batchOps", has<&RunTimeMgr::batchOpsHandler>},
    {"codeWrapper", has<&RunTimeMgr::codeWrapperHandler>},
    {"sceneFile", has<&RunTimeMgr::sceneFileHandler>},
};

Inspection::RunTime runTimeOf(Rtid id, const SceneItem::Ptr& root)
{
    const auto& registry = RunTimeMgr::instance();
    Inspection::RunTime runTime{id, registry.hasId(id) ? registry.getName(id) : "", {}, {}};
    for (const auto& kind : kKinds) {
        if (kind.isInstalled(id)) {
            runTime.handlers.emplace_back(kind.name);
        }
    }
    if (root) {
        for (const auto& gateway : SceneSegmentHandler::findGatewayItems(root->path(), id)) {
            runTime.gateways.push_back(gateway->path());
        }
    }
    return runTime;
}

void addSubjects(std::vector<Inspection::Observed>& subjects)
{
    if (Scene::hasInstance()) {
        subjects.push_back({"scene", Scene::instance().nbObservers()});
    }
    if (const auto& selection = GlobalSelection::get()) {
        subjects.push_back({"global selection", selection->nbObservers()});
    }
    subjects.push_back({"attributes", Attributes::nbObservers()});
    subjects.push_back({"visibility", Object3d::nbObservers()});
}

void addLeftovers(Inspection& found)
{
    for (const auto& runTime : found.runTimes) {
        if (runTime.name.empty()) {
            found.leftovers.push_back("handlers of run-time " + std::to_string(runTime.id) +
                                      ", which is gone");
        }
    }
    for (const auto& item : found.observedItems) {
        const auto place = PathString::string(item.path);
        if (item.nbObservers == 0) {
            found.leftovers.push_back("observers of " + place + " by " + item.interfaceName +
                                      " that died without being removed");
        } else if (!Hierarchy::createItem(item.path)) {
            found.leftovers.push_back("observers of " + place + " by " + item.interfaceName +
                                      ", which is gone");
        }
    }
}

/// Of pages that are in memory.
std::size_t residentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    file >> all >> resident;
    return file ? resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) : 0;
}

} // namespace

Inspection inspect(const SceneItem::Ptr& root)
{
    Inspection found;
    auto ids = RunTimeMgr::instance().getIds();
    ids.sort();
    for (const auto id : ids) {
        found.runTimes.push_back(runTimeOf(id, root));
    }
    addSubjects(found.subjects);
    found.observedItems = observedItems();
    addLeftovers(found);
    if (root) {
        walk(root, std::numeric_limits<std::size_t>::max(), [&found](const auto&, auto) {
            ++found.nbItems;
            return true;
        });
    }
    found.nbNames = PathComponent::tableSize();
    found.residentBytes = residentBytes();
    return found;
}

} // namespace Kiv_v4::host
