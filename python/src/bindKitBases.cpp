#include "kiv/kit/bases.h"
#include "kiv/kit/handlerBases.h"

#include "overrides.h"

namespace bound {

namespace {

namespace kit = kiv::kit;
using kiv::PathComponent;
using kiv::SceneItem;
using kiv::SceneItemList;
using Command = kiv::UndoableCommand::Ptr;
using ItemCommand = kiv::SceneItemResultUndoableCommand::Ptr;

class PyHierarchy : public Derivable<kit::HierarchyBase>
{
public:
    using Derivable::Derivable;
    KIV_NOUN(bool, hasChildren)
    KIV_PURE_NOUN(SceneItemList, children)
    KIV_CONST_METHOD(bool, hasFilteredChildren, (const kiv::ChildFilter& filter), (filter))
    KIV_CONST_METHOD(SceneItemList, filteredChildren, (const kiv::ChildFilter& filter), (filter))
    KIV_NOUN(kiv::ChildFilter, defaultChildFilter)
    KIV_NOUN(SceneItem::Ptr, parent)
    KIV_NOUN(SceneItem::Ptr, defaultParent)
    KIV_METHOD(ItemCommand, createChildCmd,
               (const std::string& nodeType, const PathComponent& name), (nodeType, name))
    KIV_METHOD(kiv::InsertChildCommand::Ptr, insertChildCmd,
               (const SceneItem::Ptr& child, const SceneItem::Ptr& before), (child, before))
    KIV_METHOD(ItemCommand, createGroupCmd,
               (const SceneItemList& members, const PathComponent& name), (members, name))
    KIV_METHOD(Command, reorderCmd, (const SceneItemList& orderedList), (orderedList))
    KIV_METHOD(Command, ungroupCmd, (), ())
};

class PyOps : public Derivable<kit::SceneItemOpsBase>
{
public:
    using Derivable::Derivable;
    KIV_METHOD(Command, deleteItemCmd, (), ())
    KIV_METHOD(bool, deleteItem, (), ())
    KIV_METHOD(ItemCommand, duplicateItemCmd, (), ())
    KIV_METHOD(kiv::Duplicate, duplicateItem, (), ())
    KIV_CONST_METHOD(PathComponent, validName, (const PathComponent& name), (name))
    KIV_METHOD(ItemCommand, renameItemCmd, (const PathComponent& newName), (newName))
    KIV_METHOD(kiv::Rename, renameItem, (const PathComponent& newName), (newName))
};

class PyAttributes : public Derivable<kit::AttributesBase>
{
public:
    using Derivable::Derivable;
    KIV_PURE_CONST_METHOD(std::string, attributeType, (const std::string& name), (name))
    KIV_PURE_METHOD(kiv::Attribute::Ptr, attribute, (const std::string& name), (name))
    KIV_PURE_NOUN(std::vector<std::string>, attributeNames)
    KIV_CONST_METHOD(bool, hasAttribute, (const std::string& name), (name))
    KIV_METHOD(kiv::AttributeResultUndoableCommand::Ptr, addAttributeCmd,
               (const std::string& type, const std::string& name), (type, name))
    KIV_METHOD(Command, removeAttributeCmd, (const std::string& name), (name))
    KIV_METHOD(kiv::AttributeResultUndoableCommand::Ptr, renameAttributeCmd,
               (const std::string& name, const std::string& newName), (name, newName))
    KIV_CONST_METHOD(kiv::AttributeDef::Ptr, attributeDef, (const std::string& name), (name))
};

#define KIV_XYZ(name) KIV_METHOD(Command, name, (double x, double y, double z), (x, y, z))

class PyTransform3d : public Derivable<kit::Transform3dBase>
{
public:
    using Derivable::Derivable;
    KIV_PURE_NOUN(kiv::Matrix4d, matrix)
    KIV_NOUN(kiv::Matrix4d, segmentInclusiveMatrix)
    KIV_NOUN(kiv::Matrix4d, segmentExclusiveMatrix)
    KIV_XYZ(translateCmd)
    KIV_NOUN(kiv::Vector3d, translation)
    KIV_XYZ(rotateCmd)
    KIV_NOUN(kiv::Vector3d, rotation)
    KIV_XYZ(scaleCmd)
    KIV_NOUN(kiv::Vector3d, scale)
    KIV_XYZ(rotatePivotCmd)
    KIV_NOUN(kiv::Vector3d, rotatePivot)
    KIV_XYZ(scalePivotCmd)
    KIV_NOUN(kiv::Vector3d, scalePivot)
    KIV_XYZ(translateRotatePivotCmd)
    KIV_NOUN(kiv::Vector3d, rotatePivotTranslation)
    KIV_XYZ(translateScalePivotCmd)
    KIV_NOUN(kiv::Vector3d, scalePivotTranslation)
    KIV_XYZ(rotateAxisCmd)
    KIV_NOUN(kiv::Vector3d, rotateAxis)
    KIV_XYZ(shearCmd)
    KIV_NOUN(kiv::Vector3d, shear)
    KIV_METHOD(Command, setMatrixCmd, (const kiv::Matrix4d& matrix), (matrix))
};

#define KIV_FLOAT(name)                                                                            \
    KIV_NOUN(float, name)                                                                          \
    KIV_METHOD(Command, name##Cmd, (float value), (value))

class PyCamera : public Derivable<kit::CameraBase>
{
public:
    using Derivable::Derivable;
    KIV_FLOAT(horizontalAperture)
    KIV_FLOAT(verticalAperture)
    KIV_FLOAT(horizontalApertureOffset)
    KIV_FLOAT(verticalApertureOffset)
    KIV_FLOAT(fStop)
    KIV_FLOAT(focalLength)
    KIV_FLOAT(focusDistance)
    KIV_FLOAT(nearClipPlane)
    KIV_FLOAT(farClipPlane)
    KIV_NOUN(Projection, projection)
    KIV_METHOD(Command, projectionCmd, (Projection value), (value))
};

class PyLight : public Derivable<kit::LightBase>
{
public:
    using Derivable::Derivable;
    using Directional = std::shared_ptr<DirectionalInterface>;
    using Sphere = std::shared_ptr<SphereInterface>;
    using Cone = std::shared_ptr<ConeInterface>;
    using Area = std::shared_ptr<AreaInterface>;
    KIV_NOUN(Type, type)
    KIV_FLOAT(intensity)
    KIV_FLOAT(diffuse)
    KIV_FLOAT(specular)
    KIV_NOUN(kiv::Color3f, color)
    KIV_METHOD(Command, colorCmd, (float r, float g, float b), (r, g, b))
    KIV_NOUN(bool, shadowEnable)
    KIV_METHOD(Command, shadowEnableCmd, (bool value), (value))
    KIV_NOUN(kiv::Color3f, shadowColor)
    KIV_METHOD(Command, shadowColorCmd, (float r, float g, float b), (r, g, b))

protected:
    KIV_METHOD(Directional, directionalInterfaceImpl, (), ())
    KIV_METHOD(Sphere, sphereInterfaceImpl, (), ())
    KIV_METHOD(Cone, coneInterfaceImpl, (), ())
    KIV_METHOD(Area, areaInterfaceImpl, (), ())
};

class PyObject3d : public Derivable<kit::Object3dBase>
{
public:
    using Derivable::Derivable;
    KIV_NOUN(kiv::BoundingBox3d, boundingBox)
    KIV_NOUN(bool, visibility)
    KIV_METHOD(Command, setVisibilityCmd, (bool visible), (visible))
    KIV_METHOD(bool, setVisibility, (bool visible), (visible))
};

class PyGraphNode : public Derivable<kit::NodeGraphNodeBase>
{
public:
    using Derivable::Derivable;
    using Pair = kiv::TypedVectorN<float, 2>;
    KIV_NOUN(bool, hasPosition)
    KIV_NOUN(Pair, position)
    KIV_METHOD(Command, setPositionCmd, (const Pair& position), (position))
    KIV_NOUN(bool, hasSize)
    KIV_NOUN(Pair, size)
    KIV_METHOD(Command, setSizeCmd, (const Pair& size), (size))
};

class PyGateways : public Derivable<kit::SceneSegmentHandlerBase>
{
public:
    using Derivable::Derivable;
    KIV_PURE_CONST_METHOD(kiv::Rtid, target, (const kiv::Path& path), (path))
    KIV_METHOD(bool, isGatewayItem, (const kiv::Path& path), (path))
    KIV_METHOD(kiv::Selection, gatewayItems, (const kiv::Path& path), (path))
    KIV_METHOD(kiv::Selection, gatewayItems, (const kiv::Path& path, kiv::Rtid id), (path, id))
};

class PyLooks : public Derivable<kit::UIInfoHandlerBase>
{
public:
    using Derivable::Derivable;
    KIV_CONST_METHOD(kiv::CellInfo, treeViewCellInfo,
                     (const SceneItem::Ptr& item, const kiv::CellInfo& look), (item, look))
    KIV_CONST_METHOD(Icon, treeViewIcon, (const SceneItem::Ptr& item), (item))
    KIV_CONST_METHOD(std::string, treeViewTooltip, (const SceneItem::Ptr& item), (item))
    KIV_NOUN(std::string, runTimeLabel)
};

class PyMenu : public Derivable<kit::ContextOpsBase>
{
public:
    using Derivable::Derivable;
    KIV_CONST_METHOD(std::vector<kiv::ContextItem>, items, (const ItemPath& itemPath), (itemPath))
    KIV_METHOD(Command, doOpCmd, (const ItemPath& itemPath), (itemPath))
};

class PyNodeDef : public Derivable<kit::NodeDefBase>
{
public:
    using Derivable::Derivable;
    KIV_NOUN(std::string, displayName)
    KIV_NOUN(std::string, description)
    KIV_NOUN(std::vector<std::string>, classifications)
    KIV_NOUN(std::vector<kiv::AttributeDef::Ptr>, inputs)
    KIV_NOUN(std::vector<kiv::AttributeDef::Ptr>, outputs)
    KIV_CONST_METHOD(kiv::Value, metadata, (const std::string& key), (key))
    KIV_CONST_METHOD(bool, hasMetadata, (const std::string& key), (key))
    KIV_CONST_METHOD(ItemCommand, createNodeCmd,
                     (const SceneItem::Ptr& parent, const PathComponent& name), (parent, name))
};

template <class T, class Interface, class Trampoline, class... Parameters, class... Names>
auto bindBase(nb::module_& module, const char* name, const Names&... names)
{
    Class<T, Interface, Trampoline> type(module, name, std::string("kit::") + name);
    type.def(nb::init<Parameters...>(), names...);
    return type;
}

} // namespace

void bindKitBases(nb::module_& module)
{
    using Item = SceneItem::Ptr;
    bindBase<kit::HierarchyBase, kiv::Hierarchy, PyHierarchy, Item>(module, "HierarchyBase",
                                                                    "item"_a);
    bindBase<kit::SceneItemOpsBase, kiv::SceneItemOps, PyOps, Item>(module, "SceneItemOpsBase",
                                                                    "item"_a);
    bindBase<kit::AttributesBase, kiv::Attributes_v4_2, PyAttributes, Item>(
        module, "AttributesBase", "item"_a);
    bindBase<kit::Transform3dBase, kiv::Transform3d, PyTransform3d, Item>(module, "Transform3dBase",
                                                                          "item"_a);
    bindBase<kit::CameraBase, kiv::Camera, PyCamera, Item>(module, "CameraBase", "item"_a);
    bindBase<kit::LightBase, kiv::Light, PyLight, Item>(module, "LightBase", "item"_a);
    bindBase<kit::Object3dBase, kiv::Object3d, PyObject3d, Item>(module, "Object3dBase", "item"_a);
    bindBase<kit::NodeGraphNodeBase, kiv::UINodeGraphNode_v4_1, PyGraphNode>(module,
                                                                             "NodeGraphNodeBase");
    bindBase<kit::SceneSegmentHandlerBase, kiv::SceneSegmentHandler, PyGateways>(
        module, "SceneSegmentHandlerBase")
        .method("target", &kit::SceneSegmentHandlerBase::target, "path"_a);
    bindBase<kit::UIInfoHandlerBase, kiv::UIInfoHandler, PyLooks, kiv::Rtid>(
        module, "UIInfoHandlerBase", "run_time_id"_a);
    bindBase<kit::ContextOpsBase, kiv::ContextOps, PyMenu, Item>(module, "ContextOpsBase",
                                                                 "item"_a);
    bindBase<kit::NodeDefBase, kiv::NodeDef, PyNodeDef, std::string>(module, "NodeDefBase",
                                                                     "type"_a);
}

} // namespace bound
