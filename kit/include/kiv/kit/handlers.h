#pragma once

#include <functional>

#include "kiv/attributes.h"
#include "kiv/cameraHandler.h"
#include "kiv/contextOps.h"
#include "kiv/export.h"
#include "kiv/hierarchyHandler.h"
#include "kiv/lightHandler.h"
#include "kiv/material.h"
#include "kiv/object3d.h"
#include "kiv/sceneItemOps.h"
#include "kiv/transform3dHandler.h"
#include "kiv/uiNodeGraphNode.h"

namespace Kiv_v4::kit {

// Handlers for `RunTimeMgr` from functions, for run-times that need no more than one. Each function
// gets an item of the run-time, which may be out of date, and must return null if it has no such
// interface.

/// A function that makes the interface of an item.
template <class Interface>
using Maker = std::function<std::shared_ptr<Interface>(const SceneItem::Ptr& item)>;

/// Return a handler that returns the results of `make`.
[[nodiscard]] KIV_EXPORT SceneItemOpsHandler::Ptr sceneItemOpsHandler(Maker<SceneItemOps> make);
[[nodiscard]] KIV_EXPORT AttributesHandler::Ptr attributesHandler(Maker<Attributes> make);
[[nodiscard]] KIV_EXPORT Transform3dHandler::Ptr transform3dHandler(Maker<Transform3d> make);
[[nodiscard]] KIV_EXPORT Object3dHandler::Ptr object3dHandler(Maker<Object3d> make);
[[nodiscard]] KIV_EXPORT LightHandler::Ptr lightHandler(Maker<Light> make);
[[nodiscard]] KIV_EXPORT MaterialHandler::Ptr materialHandler(Maker<Material> make);
[[nodiscard]] KIV_EXPORT ContextOpsHandler::Ptr contextOpsHandler(Maker<ContextOps> make);
[[nodiscard]] KIV_EXPORT UINodeGraphNodeHandler::Ptr
uiNodeGraphNodeHandler(Maker<UINodeGraphNode> make);

/// Returns a handler that finds the cameras at and under a path by a walk through the hierarchy of
/// the run-time that calls `make` for each item.
[[nodiscard]] KIV_EXPORT CameraHandler::Ptr cameraHandler(Maker<Camera> make);

/// Returns a handler. `item` must return the item at a path, or null; `roots` must return the items
/// that begin under a gateway or, with an empty path, at the top.
[[nodiscard]] KIV_EXPORT HierarchyHandler::Ptr
hierarchyHandler(Maker<Hierarchy> make, std::function<SceneItem::Ptr(const Path& path)> item,
                 std::function<SceneItemList(const Path& gateway)> roots);

} // namespace Kiv_v4::kit
