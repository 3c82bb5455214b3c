#include "kiv/runTimeMgr.h"

#include <algorithm>
#include <tuple>
#include <type_traits>
#include <unordered_map>

#include "kiv/runTimeEvent.h"

#include "detail/handlerTable.h"
#include "detail/noDestructor.h"

namespace Kiv_v4 {

namespace {

/// One table per kind, in the order in which `unregister` empties them before it erases the name.
/// The last kind, batchOps, is erased after the name.
using HandlerTables =
    std::tuple<detail::HandlerTable<HierarchyHandler>, detail::HandlerTable<Transform3dHandler>,
               detail::HandlerTable<SceneItemOpsHandler>, detail::HandlerTable<AttributesHandler>,
               detail::HandlerTable<ConnectionHandler>,
               detail::HandlerTable<UINodeGraphNodeHandler>, detail::HandlerTable<Object3dHandler>,
               detail::HandlerTable<MaterialHandler>, detail::HandlerTable<ContextOpsHandler>,
               detail::HandlerTable<UIInfoHandler>, detail::HandlerTable<CameraHandler>,
               detail::HandlerTable<LightHandler>, detail::HandlerTable<PathMappingHandler>,
               detail::HandlerTable<NodeDefHandler>, detail::HandlerTable<SceneSegmentHandler>>;

struct Registry
{
    Rtid nextRtid = 1;
    std::unordered_map<std::string, Rtid> nameToId;
    HandlerTables tables;
    detail::HandlerTable<BatchOpsHandler> batchOpsTable;
    detail::HandlerTable<CodeWrapperHandler> codeWrapperTable;
    detail::HandlerTable<SceneFileHandler> sceneFileTable;
    RunTimeListener listener;

    [[nodiscard]] auto findName(Rtid rtId) const
    {
        return std::find_if(nameToId.begin(), nameToId.end(),
                            [rtId](const auto& entry) { return entry.second == rtId; });
    }
};

// Run-times in other shared objects may unregister after this library's statics died.
Registry& registry()
{
    static detail::NoDestructor<Registry> shared;
    return *shared;
}

template <class Handler>
detail::HandlerTable<Handler>& table()
{
    if constexpr (std::is_same_v<Handler, BatchOpsHandler>) {
        return registry().batchOpsTable;
    } else if constexpr (std::is_same_v<Handler, CodeWrapperHandler>) {
        return registry().codeWrapperTable;
    } else if constexpr (std::is_same_v<Handler, SceneFileHandler>) {
        return registry().sceneFileTable;
    } else {
        return std::get<detail::HandlerTable<Handler>>(registry().tables);
    }
}

template <class... Handler>
void storeAll(Rtid rtId, const std::shared_ptr<Handler>&... handlers)
{
    (table<Handler>().set(rtId, handlers), ...);
}

/// Erases kind after kind and stops at the first that has nothing to erase.
bool eraseHandlers(Rtid rtId)
{
    return std::apply([rtId](auto&... tables) { return (tables.erase(rtId) && ...); },
                      registry().tables);
}

void enterName(const std::string& name, Rtid rtId)
{
    if (!registry().nameToId.emplace(name, rtId).second) {
        throw InvalidRunTimeName(name);
    }
}

bool eraseName(Rtid rtId)
{
    const auto name = registry().findName(rtId);
    if (name == registry().nameToId.end()) {
        return false;
    }
    registry().nameToId.erase(name);
    // Optional kinds, so a missing entry is not a failure.
    registry().codeWrapperTable.erase(rtId);
    registry().sceneFileTable.erase(rtId);
    return true;
}

void tell(RunTimeEvent event, Rtid rtId)
{
    if (const auto listener = registry().listener) {
        listener(event, rtId);
    }
}

} // namespace

void setRunTimeListener(RunTimeListener listener)
{
    registry().listener = std::move(listener);
}

RunTimeMgr& RunTimeMgr::instance()
{
    static RunTimeMgr manager;
    return manager;
}

Rtid RunTimeMgr::register_(const std::string& name, const Handlers& handlers)
{
    if (registry().nameToId.count(name) != 0) {
        throw InvalidRunTimeName(name);
    }
    // Storing may release handlers that were already set for the id; they may use the registry.
    const auto rtId = registry().nextRtid++;
    try {
        storeAll(rtId, handlers.hierarchyHandler, handlers.transform3dHandler,
                 handlers.sceneItemOpsHandler, handlers.attributesHandler,
                 handlers.connectionHandler, handlers.uiNodeGraphNodeHandler,
                 handlers.object3dHandler, handlers.materialHandler, handlers.contextOpsHandler,
                 handlers.uiInfoHandler, handlers.cameraHandler, handlers.lightHandler,
                 handlers.pathMappingHandler, handlers.nodeDefHandler, handlers.sceneSegmentHandler,
                 handlers.batchOpsHandler);
        enterName(name, rtId);
    } catch (...) {
        if (eraseHandlers(rtId)) {
            registry().batchOpsTable.erase(rtId);
        }
        throw;
    }
    tell(RunTimeEvent::Registered, rtId);
    return rtId;
}

bool RunTimeMgr::unregister(const Rtid& rtId)
{
    const auto id = rtId; // the reference may lead into what is erased
    if (!hasId(id)) {
        return false;
    }
    tell(RunTimeEvent::Leaving, id);
    return eraseHandlers(id) && eraseName(id) && registry().batchOpsTable.erase(id);
}

std::string RunTimeMgr::getName(const Rtid& rtId) const
{
    const auto found = registry().findName(rtId);
    if (found == registry().nameToId.end()) {
        throw InvalidRunTimeId(rtId);
    }
    return found->first;
}

Rtid RunTimeMgr::getId(const std::string& name) const
{
    const auto found = registry().nameToId.find(name);
    if (found == registry().nameToId.end()) {
        throw InvalidRunTimeName(name);
    }
    return found->second;
}

bool RunTimeMgr::hasId(const Rtid& rtId) const
{
    return registry().findName(rtId) != registry().nameToId.end();
}

std::list<Rtid> RunTimeMgr::getIds() const
{
    std::list<Rtid> ids;
    for (const auto& entry : table<HierarchyHandler>().entries()) {
        ids.push_back(entry.first);
    }
    return ids;
}

HierarchyHandler& RunTimeMgr::hierarchyHandlerRef(const Rtid& rtId) const
{
    const auto& handler = table<HierarchyHandler>().get(rtId);
    if (!handler) {
        throw InvalidRunTimeId(rtId);
    }
    return *handler;
}

// The setter and the getter of one kind.
#define KIV_HANDLER_KIND(Handler, setter, getter)                                                  \
    void RunTimeMgr::setter(const Rtid& rtId, const std::shared_ptr<Handler>& handler)             \
    {                                                                                              \
        table<Handler>().set(rtId, handler);                                                       \
        if (std::is_same_v<Handler, HierarchyHandler> && handler) {                                \
            tell(RunTimeEvent::Installed, rtId);                                                   \
        }                                                                                          \
    }                                                                                              \
    std::shared_ptr<Handler> RunTimeMgr::getter(const Rtid& rtId) const                            \
    {                                                                                              \
        return table<Handler>().get(rtId);                                                         \
    }

KIV_HANDLER_KIND(HierarchyHandler, setHierarchyHandler, hierarchyHandler)
KIV_HANDLER_KIND(Transform3dHandler, setTransform3dHandler, transform3dHandler)
KIV_HANDLER_KIND(SceneItemOpsHandler, setSceneItemOpsHandler, sceneItemOpsHandler)
KIV_HANDLER_KIND(AttributesHandler, setAttributesHandler, attributesHandler)
KIV_HANDLER_KIND(ConnectionHandler, setConnectionHandler, connectionHandler)
KIV_HANDLER_KIND(UINodeGraphNodeHandler, setUINodeGraphNodeHandler, uiNodeGraphNodeHandler)
KIV_HANDLER_KIND(Object3dHandler, setObject3dHandler, object3dHandler)
KIV_HANDLER_KIND(MaterialHandler, setMaterialHandler, materialHandler)
KIV_HANDLER_KIND(ContextOpsHandler, setContextOpsHandler, contextOpsHandler)
KIV_HANDLER_KIND(UIInfoHandler, setUIInfoHandler, uiInfoHandler)
KIV_HANDLER_KIND(CameraHandler, setCameraHandler, cameraHandler)
KIV_HANDLER_KIND(LightHandler, setLightHandler, lightHandler)
KIV_HANDLER_KIND(PathMappingHandler, setPathMappingHandler, pathMappingHandler)
KIV_HANDLER_KIND(NodeDefHandler, setNodeDefHandler, nodeDefHandler)
KIV_HANDLER_KIND(SceneSegmentHandler, setSceneSegmentHandler, sceneSegmentHandler)
KIV_HANDLER_KIND(BatchOpsHandler, setBatchOpsHandler, batchOpsHandler)
KIV_HANDLER_KIND(CodeWrapperHandler, setCodeWrapperHandler, codeWrapperHandler)
KIV_HANDLER_KIND(SceneFileHandler, setSceneFileHandler, sceneFileHandler)

#undef KIV_HANDLER_KIND

InvalidRunTimeId::InvalidRunTimeId(const Rtid& rtId) : std::out_of_range(std::to_string(rtId)) {}

InvalidRunTimeId::~InvalidRunTimeId() = default;

InvalidRunTimeName::InvalidRunTimeName(const std::string& name) : std::runtime_error(name) {}

InvalidRunTimeName::~InvalidRunTimeName() = default;

} // namespace Kiv_v4
