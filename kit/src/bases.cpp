#include "kiv/kit/bases.h"

#include <utility>

#include "kiv/kit/affine.h"

namespace Kiv_v4::kit {

namespace {

bool executed(const UndoableCommand::Ptr& command)
{
    if (command) {
        command->execute();
    }
    return command != nullptr;
}

} // namespace

HierarchyBase::HierarchyBase(SceneItem::Ptr item) : _item(std::move(item)) {}
HierarchyBase::~HierarchyBase() = default;

bool HierarchyBase::hasChildren() const
{
    return !children().empty();
}

bool HierarchyBase::hasFilteredChildren(const ChildFilter&) const
{
    return hasChildren();
}

SceneItemList HierarchyBase::filteredChildren(const ChildFilter&) const
{
    return children();
}

ChildFilter HierarchyBase::defaultChildFilter() const
{
    return {};
}

SceneItem::Ptr HierarchyBase::parent() const
{
    return createItem(path().pop());
}

SceneItem::Ptr HierarchyBase::defaultParent() const
{
    return nullptr;
}

SceneItemResultUndoableCommand::Ptr HierarchyBase::createChildCmd(const std::string&,
                                                                  const PathComponent&)
{
    return nullptr;
}

InsertChildCommand::Ptr HierarchyBase::insertChildCmd(const SceneItem::Ptr&, const SceneItem::Ptr&)
{
    return nullptr;
}

SceneItemResultUndoableCommand::Ptr HierarchyBase::createGroupCmd(const SceneItemList&,
                                                                  const PathComponent&)
{
    return nullptr;
}

UndoableCommand::Ptr HierarchyBase::reorderCmd(const SceneItemList&)
{
    return nullptr;
}

UndoableCommand::Ptr HierarchyBase::ungroupCmd()
{
    return nullptr;
}

SceneItemOpsBase::SceneItemOpsBase(SceneItem::Ptr item) : _item(std::move(item)) {}
SceneItemOpsBase::~SceneItemOpsBase() = default;

Path SceneItemOpsBase::path() const
{
    return _item ? _item->path() : Path();
}

UndoableCommand::Ptr SceneItemOpsBase::deleteItemCmd()
{
    return nullptr;
}

bool SceneItemOpsBase::deleteItem()
{
    return executed(deleteItemCmd());
}

SceneItemResultUndoableCommand::Ptr SceneItemOpsBase::duplicateItemCmd()
{
    return nullptr;
}

Duplicate SceneItemOpsBase::duplicateItem()
{
    const auto command = duplicateItemCmd();
    return executed(command) ? Duplicate(command->sceneItem(), command) : Duplicate();
}

PathComponent SceneItemOpsBase::validName(const PathComponent&) const
{
    return {};
}

SceneItemResultUndoableCommand::Ptr SceneItemOpsBase::renameItemCmd(const PathComponent&)
{
    return nullptr;
}

Rename SceneItemOpsBase::renameItem(const PathComponent& newName)
{
    const auto command = renameItemCmd(newName);
    return executed(command) ? Rename(command->sceneItem(), command) : Rename();
}

AttributesBase::AttributesBase(SceneItem::Ptr item) : _item(std::move(item)) {}
AttributesBase::~AttributesBase() = default;

bool AttributesBase::hasAttribute(const std::string& name) const
{
    return attributeType(name) != Attribute::kInvalid;
}

AttributeResultUndoableCommand::Ptr AttributesBase::addAttributeCmd(const std::string&,
                                                                    const std::string&)
{
    return nullptr;
}

UndoableCommand::Ptr AttributesBase::removeAttributeCmd(const std::string&)
{
    return nullptr;
}

AttributeResultUndoableCommand::Ptr AttributesBase::renameAttributeCmd(const std::string&,
                                                                       const std::string&)
{
    return nullptr;
}

AttributeDef::Ptr AttributesBase::attributeDef(const std::string&) const
{
    return nullptr;
}

Transform3dBase::Transform3dBase(SceneItem::Ptr item) : _item(std::move(item)) {}
Transform3dBase::~Transform3dBase() = default;

Matrix4d Transform3dBase::segmentInclusiveMatrix() const
{
    return matrix() * segmentExclusiveMatrix();
}

Matrix4d Transform3dBase::segmentExclusiveMatrix() const
{
    auto result = identity();
    const auto nbSegments = path().nbSegments();
    for (auto above = path().pop(); above.nbSegments() == nbSegments; above = above.pop()) {
        const auto item = Hierarchy::createItem(above);
        if (const auto transform = transform3dRead(item)) {
            result = result * transform->matrix();
        }
    }
    return result;
}

UndoableCommand::Ptr Transform3dBase::translateCmd(double, double, double)
{
    return nullptr;
}

Vector3d Transform3dBase::translation() const
{
    return transformedPoint({}, matrix());
}

UndoableCommand::Ptr Transform3dBase::rotateCmd(double, double, double)
{
    return nullptr;
}

Vector3d Transform3dBase::rotation() const
{
    return decomposed(matrix()).value_or(AffineFactors()).rotation;
}

UndoableCommand::Ptr Transform3dBase::scaleCmd(double, double, double)
{
    return nullptr;
}

Vector3d Transform3dBase::scale() const
{
    return decomposed(matrix()).value_or(AffineFactors()).scale;
}

Vector3d Transform3dBase::shear() const
{
    return decomposed(matrix()).value_or(AffineFactors()).shear;
}

UndoableCommand::Ptr Transform3dBase::rotatePivotCmd(double, double, double)
{
    return nullptr;
}

Vector3d Transform3dBase::rotatePivot() const
{
    return {};
}

UndoableCommand::Ptr Transform3dBase::scalePivotCmd(double, double, double)
{
    return nullptr;
}

Vector3d Transform3dBase::scalePivot() const
{
    return {};
}

UndoableCommand::Ptr Transform3dBase::setMatrixCmd(const Matrix4d&)
{
    return nullptr;
}

NodeGraphNodeBase::NodeGraphNodeBase() = default;
NodeGraphNodeBase::~NodeGraphNodeBase() = default;

bool NodeGraphNodeBase::hasPosition() const
{
    return false;
}

TypedVectorN<float, 2> NodeGraphNodeBase::position() const
{
    return {};
}

UndoableCommand::Ptr NodeGraphNodeBase::setPositionCmd(const TypedVectorN<float, 2>&)
{
    return nullptr;
}

bool NodeGraphNodeBase::hasSize() const
{
    return false;
}

TypedVectorN<float, 2> NodeGraphNodeBase::size() const
{
    return {};
}

UndoableCommand::Ptr NodeGraphNodeBase::setSizeCmd(const TypedVectorN<float, 2>&)
{
    return nullptr;
}

Object3dBase::Object3dBase(SceneItem::Ptr item) : _item(std::move(item)) {}
Object3dBase::~Object3dBase() = default;

BoundingBox3d Object3dBase::boundingBox() const
{
    return {};
}

bool Object3dBase::visibility() const
{
    return true;
}

UndoableCommand::Ptr Object3dBase::setVisibilityCmd(bool)
{
    return nullptr;
}

bool Object3dBase::setVisibility(bool visible)
{
    return executed(setVisibilityCmd(visible));
}

} // namespace Kiv_v4::kit
