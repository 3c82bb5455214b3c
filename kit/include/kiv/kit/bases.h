#pragma once

#include <string>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/export.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/object3d.h"
#include "kiv/sceneItemOps.h"
#include "kiv/transform3d.h"
#include "kiv/uiNodeGraphNode.h"

namespace Kiv_v4::kit {

// A base class for each interface, from which a run-time overrides as much as it can. Command
// makers that are not overridden refuse (return null), getters return the value for a run-time
// without the feature, and conveniences execute the commands of the makers. Each object is the view
// of one item and should look its data up at each call, so that it also works for an item that is
// out of date.

/// Only the children must be implemented.
class KIV_EXPORT HierarchyBase : public Hierarchy
{
public:
    /// `item` must not be null, here and in the classes below.
    explicit HierarchyBase(SceneItem::Ptr item);
    ~HierarchyBase() override;

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item; }

    /// By default, whether `children()` is not empty: override it if that is expensive.
    [[nodiscard]] bool hasChildren() const override;

    // By default there are no flags to filter by.
    [[nodiscard]] bool hasFilteredChildren(const ChildFilter& filter) const override;
    [[nodiscard]] SceneItemList filteredChildren(const ChildFilter& filter) const override;
    [[nodiscard]] ChildFilter defaultChildFilter() const override;

    /// The item at the path without its last component; for a root below a gateway, the gateway.
    [[nodiscard]] SceneItem::Ptr parent() const override;

    /// By default null: nothing can be added.
    [[nodiscard]] SceneItem::Ptr defaultParent() const override;

    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createChildCmd(const std::string& nodeType, const PathComponent& name) override;
    [[nodiscard]] InsertChildCommand::Ptr insertChildCmd(const SceneItem::Ptr& child,
                                                         const SceneItem::Ptr& before) override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createGroupCmd(const SceneItemList& members, const PathComponent& name) override;
    [[nodiscard]] UndoableCommand::Ptr reorderCmd(const SceneItemList& orderedList) override;
    [[nodiscard]] UndoableCommand::Ptr ungroupCmd() override;

protected:
    /// Returns the path of the item.
    [[nodiscard]] const Path& path() const { return _item->path(); }

private:
    const SceneItem::Ptr _item;
};

/// By default refuses to delete, duplicate and rename.
class KIV_EXPORT SceneItemOpsBase : public SceneItemOps
{
public:
    explicit SceneItemOpsBase(SceneItem::Ptr item);
    ~SceneItemOpsBase() override;

    void setItem(const SceneItem::Ptr& item) override { _item = item; }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item; }
    [[nodiscard]] Path path() const override;

    [[nodiscard]] UndoableCommand::Ptr deleteItemCmd() override;
    bool deleteItem() override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr duplicateItemCmd() override;
    Duplicate duplicateItem() override;
    [[nodiscard]] PathComponent validName(const PathComponent& name) const override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    renameItemCmd(const PathComponent& newName) override;
    Rename renameItem(const PathComponent& newName) override;

private:
    SceneItem::Ptr _item;
};

/// Attributes that cannot be added, removed or renamed and have no definitions. `AttributeTable`
/// makes complete ones.
class KIV_EXPORT AttributesBase : public Attributes_v4_2
{
public:
    explicit AttributesBase(SceneItem::Ptr item);
    ~AttributesBase() override;

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item; }
    [[nodiscard]] bool hasAttribute(const std::string& name) const override;
    [[nodiscard]] AttributeResultUndoableCommand::Ptr
    addAttributeCmd(const std::string& type, const std::string& name) override;
    [[nodiscard]] UndoableCommand::Ptr removeAttributeCmd(const std::string& name) override;
    [[nodiscard]] AttributeResultUndoableCommand::Ptr
    renameAttributeCmd(const std::string& name, const std::string& newName) override;
    [[nodiscard]] AttributeDef::Ptr attributeDef(const std::string& name) const override;

private:
    const SceneItem::Ptr _item;
};

/// Only the matrix must be implemented: the other values are its factors, without pivots, and the
/// segment's matrix is the product with the transforms of the ancestors in the segment, without
/// those that have none. `transforms.h` makes complete ones that can be edited.
class KIV_EXPORT Transform3dBase : public Transform3d
{
public:
    explicit Transform3dBase(SceneItem::Ptr item);
    ~Transform3dBase() override;

    [[nodiscard]] const Path& path() const override { return _item->path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item; }

    /// Cost: linear in the depth in the segment; makes an item and a transform of each ancestor.
    [[nodiscard]] Matrix4d segmentInclusiveMatrix() const override;
    [[nodiscard]] Matrix4d segmentExclusiveMatrix() const override;

    [[nodiscard]] UndoableCommand::Ptr translateCmd(double x, double y, double z) override;
    [[nodiscard]] Vector3d translation() const override;
    [[nodiscard]] UndoableCommand::Ptr rotateCmd(double x, double y, double z) override;
    [[nodiscard]] Vector3d rotation() const override;
    [[nodiscard]] UndoableCommand::Ptr scaleCmd(double x, double y, double z) override;
    [[nodiscard]] Vector3d scale() const override;
    [[nodiscard]] Vector3d shear() const override;
    [[nodiscard]] UndoableCommand::Ptr rotatePivotCmd(double x, double y, double z) override;
    [[nodiscard]] Vector3d rotatePivot() const override;
    [[nodiscard]] UndoableCommand::Ptr scalePivotCmd(double x, double y, double z) override;
    [[nodiscard]] Vector3d scalePivot() const override;
    [[nodiscard]] UndoableCommand::Ptr setMatrixCmd(const Matrix4d& matrix) override;

private:
    const SceneItem::Ptr _item;
};

/// A perspective camera with a full frame, 36 by 24 mm, and a lens of 50 mm. Override the values
/// that the data have.
class KIV_EXPORT CameraBase : public Camera
{
public:
    explicit CameraBase(SceneItem::Ptr item);
    ~CameraBase() override;

    [[nodiscard]] const Path& path() const override { return _item->path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item; }

    [[nodiscard]] UndoableCommand::Ptr horizontalApertureCmd(float value) override;
    [[nodiscard]] float horizontalAperture() const override;
    [[nodiscard]] UndoableCommand::Ptr verticalApertureCmd(float value) override;
    [[nodiscard]] float verticalAperture() const override;
    [[nodiscard]] UndoableCommand::Ptr horizontalApertureOffsetCmd(float value) override;
    [[nodiscard]] float horizontalApertureOffset() const override;
    [[nodiscard]] UndoableCommand::Ptr verticalApertureOffsetCmd(float value) override;
    [[nodiscard]] float verticalApertureOffset() const override;
    [[nodiscard]] UndoableCommand::Ptr fStopCmd(float value) override;
    [[nodiscard]] float fStop() const override;
    [[nodiscard]] UndoableCommand::Ptr focalLengthCmd(float value) override;
    [[nodiscard]] float focalLength() const override;
    [[nodiscard]] UndoableCommand::Ptr focusDistanceCmd(float value) override;
    [[nodiscard]] float focusDistance() const override;
    [[nodiscard]] UndoableCommand::Ptr nearClipPlaneCmd(float value) override;
    [[nodiscard]] float nearClipPlane() const override;
    [[nodiscard]] UndoableCommand::Ptr farClipPlaneCmd(float value) override;
    [[nodiscard]] float farClipPlane() const override;
    [[nodiscard]] UndoableCommand::Ptr projectionCmd(Projection value) override;
    [[nodiscard]] Projection projection() const override;

private:
    const SceneItem::Ptr _item;
};

/// A white light of intensity 1 without shadows, of the type that `type` returns, and without the
/// interfaces for types.
class KIV_EXPORT LightBase : public Light
{
public:
    explicit LightBase(SceneItem::Ptr item);
    ~LightBase() override;

    [[nodiscard]] const Path& path() const override { return _item->path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item; }

    [[nodiscard]] Type type() const override;
    [[nodiscard]] UndoableCommand::Ptr intensityCmd(float value) override;
    [[nodiscard]] float intensity() const override;
    [[nodiscard]] UndoableCommand::Ptr colorCmd(float r, float g, float b) override;
    [[nodiscard]] Color3f color() const override;
    [[nodiscard]] UndoableCommand::Ptr shadowEnableCmd(bool value) override;
    [[nodiscard]] bool shadowEnable() const override;
    [[nodiscard]] UndoableCommand::Ptr shadowColorCmd(float r, float g, float b) override;
    [[nodiscard]] Color3f shadowColor() const override;
    [[nodiscard]] UndoableCommand::Ptr diffuseCmd(float value) override;
    [[nodiscard]] float diffuse() const override;
    [[nodiscard]] UndoableCommand::Ptr specularCmd(float value) override;
    [[nodiscard]] float specular() const override;

protected:
    [[nodiscard]] std::shared_ptr<DirectionalInterface> directionalInterfaceImpl() override;
    [[nodiscard]] std::shared_ptr<SphereInterface> sphereInterfaceImpl() override;
    [[nodiscard]] std::shared_ptr<ConeInterface> coneInterfaceImpl() override;
    [[nodiscard]] std::shared_ptr<AreaInterface> areaInterfaceImpl() override;

private:
    const SceneItem::Ptr _item;
};

/// An item without extent that is always visible.
class KIV_EXPORT Object3dBase : public Object3d
{
public:
    explicit Object3dBase(SceneItem::Ptr item);
    ~Object3dBase() override;

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item; }
    [[nodiscard]] BoundingBox3d boundingBox() const override;
    [[nodiscard]] bool visibility() const override;
    [[nodiscard]] UndoableCommand::Ptr setVisibilityCmd(bool visible) override;
    bool setVisibility(bool visible) override;

private:
    const SceneItem::Ptr _item;
};

/// A node without position and size.
class KIV_EXPORT NodeGraphNodeBase : public UINodeGraphNode_v4_1
{
public:
    NodeGraphNodeBase();
    ~NodeGraphNodeBase() override;

    [[nodiscard]] bool hasPosition() const override;
    [[nodiscard]] TypedVectorN<float, 2> position() const override;
    [[nodiscard]] UndoableCommand::Ptr
    setPositionCmd(const TypedVectorN<float, 2>& position) override;
    [[nodiscard]] bool hasSize() const override;
    [[nodiscard]] TypedVectorN<float, 2> size() const override;
    [[nodiscard]] UndoableCommand::Ptr setSizeCmd(const TypedVectorN<float, 2>& size) override;
};

} // namespace Kiv_v4::kit
