#pragma once

#include <list>
#include <memory>
#include <stdexcept>
#include <string>

#include "kiv/export.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

class AttributesHandler;
class BatchOpsHandler;
class CameraHandler;
class CodeWrapperHandler;
class ConnectionHandler;
class ContextOpsHandler;
class HierarchyHandler;
class LightHandler;
class MaterialHandler;
class NodeDefHandler;
class Object3dHandler;
class PathMappingHandler;
class SceneItemOpsHandler;
class SceneFileHandler;
class SceneSegmentHandler;
class Transform3dHandler;
class UIInfoHandler;
class UINodeGraphNodeHandler;

/// The registry of run-times: it gives each registered name an id and keeps one handler of each
/// kind per run-time. The entry points of the interface classes (`Hierarchy::hierarchy`, ...) get
/// an item's interface object from these handlers.
///
///     RunTimeMgr::Handlers handlers;
///     handlers.hierarchyHandler = std::make_shared<MyHierarchyHandler>();
///     const Rtid id = RunTimeMgr::instance().register_("my data model", handlers);
///     PathString::registerPathComponentSeparator(id, '/');
///
/// **Lifetime.** The registry exists from the first use to the end of the process and owns the
/// handlers until they are replaced or the run-time is unregistered. It does not destroy the
/// handlers that it still holds when the process ends.
///
/// **Reentrancy.** Not locked: use it on the host's main thread.
class KIV_EXPORT RunTimeMgr
{
public:
    /// The handlers of a run-time. A null member means that it does not offer that interface; every
    /// run-time should offer the hierarchy.
    struct Handlers
    {
        /// The run-time's handler of that kind, or null.
        std::shared_ptr<HierarchyHandler> hierarchyHandler;
        std::shared_ptr<Transform3dHandler> transform3dHandler;
        std::shared_ptr<SceneItemOpsHandler> sceneItemOpsHandler;
        std::shared_ptr<AttributesHandler> attributesHandler;
        std::shared_ptr<Object3dHandler> object3dHandler;
        std::shared_ptr<MaterialHandler> materialHandler;
        std::shared_ptr<ContextOpsHandler> contextOpsHandler;
        std::shared_ptr<UIInfoHandler> uiInfoHandler;
        std::shared_ptr<CameraHandler> cameraHandler;
        std::shared_ptr<LightHandler> lightHandler;
        std::shared_ptr<PathMappingHandler> pathMappingHandler;
        std::shared_ptr<NodeDefHandler> nodeDefHandler;
        std::shared_ptr<SceneSegmentHandler> sceneSegmentHandler;
        std::shared_ptr<ConnectionHandler> connectionHandler;
        std::shared_ptr<UINodeGraphNodeHandler> uiNodeGraphNodeHandler;
        std::shared_ptr<BatchOpsHandler> batchOpsHandler;
    };

    RunTimeMgr(const RunTimeMgr&) = delete;
    RunTimeMgr& operator=(const RunTimeMgr&) = delete;

    /// The registry of the process.
    [[nodiscard]] static RunTimeMgr& instance();

    /// Registers `name` (any string) with `handlers` and returns its id. Throws
    /// `InvalidRunTimeName` if the name is already registered; then nothing changes and no id is
    /// used up.
    Rtid register_(const std::string& name, const Handlers& handlers);

    /// Removes the run-time's handlers and name. Returns whether all of them were there. A handler
    /// kind without an entry stops the removal at once, with the later kinds and the name left in
    /// place; kinds are removed in the order hierarchy, transform3d, sceneItemOps, attributes,
    /// connection, uiNodeGraphNode, object3d, material, contextOps, uiInfo, camera, light,
    /// pathMapping, nodeDef, sceneSegment, then the name, then batchOps. A run-time registered with
    /// `register_` has all entries. Path separators and creators must be unregistered with
    /// `PathString`.
    bool unregister(const Rtid& rtId);

    /// Returns the name with that id. Throws `InvalidRunTimeId` if there is none.
    [[nodiscard]] std::string getName(const Rtid& rtId) const;

    /// Returns the id of that name. Throws `InvalidRunTimeName` if the name is not registered.
    [[nodiscard]] Rtid getId(const std::string& name) const;

    /// Whether a registered name has that id. Linear in the number of run-times.
    [[nodiscard]] bool hasId(const Rtid& rtId) const;

    /// The ids that have an entry of the hierarchy kind, registered or not, in no particular order.
    [[nodiscard]] std::list<Rtid> getIds() const;

    /// Sets the run-time's handler of that kind and releases the former one. Does not check whether
    /// the id is registered.
    void setHierarchyHandler(const Rtid& rtId, const std::shared_ptr<HierarchyHandler>& handler);
    void setTransform3dHandler(const Rtid& rtId,
                               const std::shared_ptr<Transform3dHandler>& handler);
    void setSceneItemOpsHandler(const Rtid& rtId,
                                const std::shared_ptr<SceneItemOpsHandler>& handler);
    void setAttributesHandler(const Rtid& rtId, const std::shared_ptr<AttributesHandler>& handler);
    void setConnectionHandler(const Rtid& rtId, const std::shared_ptr<ConnectionHandler>& handler);
    void setUINodeGraphNodeHandler(const Rtid& rtId,
                                   const std::shared_ptr<UINodeGraphNodeHandler>& handler);
    void setObject3dHandler(const Rtid& rtId, const std::shared_ptr<Object3dHandler>& handler);
    void setMaterialHandler(const Rtid& rtId, const std::shared_ptr<MaterialHandler>& handler);
    void setContextOpsHandler(const Rtid& rtId, const std::shared_ptr<ContextOpsHandler>& handler);
    void setUIInfoHandler(const Rtid& rtId, const std::shared_ptr<UIInfoHandler>& handler);
    void setCameraHandler(const Rtid& rtId, const std::shared_ptr<CameraHandler>& handler);
    void setLightHandler(const Rtid& rtId, const std::shared_ptr<LightHandler>& handler);
    void setPathMappingHandler(const Rtid& rtId,
                               const std::shared_ptr<PathMappingHandler>& handler);
    void setNodeDefHandler(const Rtid& rtId, const std::shared_ptr<NodeDefHandler>& handler);
    void setSceneSegmentHandler(const Rtid& rtId,
                                const std::shared_ptr<SceneSegmentHandler>& handler);
    void setBatchOpsHandler(const Rtid& rtId, const std::shared_ptr<BatchOpsHandler>& handler);

    /// Sets the handler of an optional kind, which `Handlers` does not have. `unregister` removes
    /// it together with the name.
    void setCodeWrapperHandler(const Rtid& rtId,
                               const std::shared_ptr<CodeWrapperHandler>& handler);
    void setSceneFileHandler(const Rtid& rtId, const std::shared_ptr<SceneFileHandler>& handler);

    /// The run-time's handler of that kind; null for an unknown id and for a kind without a
    /// handler.
    [[nodiscard]] std::shared_ptr<HierarchyHandler> hierarchyHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<Transform3dHandler> transform3dHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<SceneItemOpsHandler> sceneItemOpsHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<AttributesHandler> attributesHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<ConnectionHandler> connectionHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<UINodeGraphNodeHandler>
    uiNodeGraphNodeHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<Object3dHandler> object3dHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<MaterialHandler> materialHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<ContextOpsHandler> contextOpsHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<UIInfoHandler> uiInfoHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<CameraHandler> cameraHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<LightHandler> lightHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<PathMappingHandler> pathMappingHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<NodeDefHandler> nodeDefHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<SceneSegmentHandler> sceneSegmentHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<BatchOpsHandler> batchOpsHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<CodeWrapperHandler> codeWrapperHandler(const Rtid& rtId) const;
    [[nodiscard]] std::shared_ptr<SceneFileHandler> sceneFileHandler(const Rtid& rtId) const;

    /// The hierarchy handler by reference, which is valid until the handler is replaced or
    /// unregistered. Throws `InvalidRunTimeId` if the run-time has none.
    [[nodiscard]] HierarchyHandler& hierarchyHandlerRef(const Rtid& rtId) const;

private:
    RunTimeMgr() = default;
};

/// A run-time id that is not registered, or whose run-time has no hierarchy handler. The message is
/// the id in decimal.
class KIV_EXPORT InvalidRunTimeId : public std::out_of_range
{
public:
    explicit InvalidRunTimeId(const Rtid& rtId);
    InvalidRunTimeId(const InvalidRunTimeId&) = default;
    ~InvalidRunTimeId() override;
};

/// A run-time name that is already registered, or is not registered. The message is the name.
class KIV_EXPORT InvalidRunTimeName : public std::runtime_error
{
public:
    explicit InvalidRunTimeName(const std::string& name);
    InvalidRunTimeName(const InvalidRunTimeName&) = default;
    ~InvalidRunTimeName() override;
};

} // namespace Kiv_v4
