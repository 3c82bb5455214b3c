#include "memoryTransform.h"

#include <utility>

#include "kiv/kit/affine.h"

#include "propertyCommands.h"

namespace Kiv_v4::memory {

using namespace kit; // matrices and the operators of vectors

namespace {

struct TransformRecord
{
    Vector3d translation;
    Vector3d rotation;
    Vector3d scale{{1, 1, 1}};
    Vector3d rotatePivot;
    Vector3d scalePivot;
    Vector3d rotatePivotTranslation;
    Vector3d scalePivotTranslation;
    Vector3d rotateAxis;
    Vector3d shear;

    static void announce(const Path& path, const Node&) { Transform3d::notify(path); }
};

Matrix4d composed(const TransformRecord& values) noexcept
{
    return translationMatrix(-values.scalePivot) * scaleShearMatrix(values.scale, values.shear) *
           translationMatrix(values.scalePivot + values.scalePivotTranslation -
                             values.rotatePivot) *
           rotationMatrix(values.rotateAxis) * rotationMatrix(values.rotation) *
           translationMatrix(values.rotatePivot + values.rotatePivotTranslation +
                             values.translation);
}

} // namespace

template <>
struct Setting<TransformRecord>
{
    using Command = SetMatrix4dUndoableCommand;
    static std::optional<TransformRecord> from(const Matrix4d& matrix)
    {
        const auto factors = decomposed(matrix);
        if (!factors) {
            return std::nullopt;
        }
        TransformRecord values;
        values.translation = factors->translation;
        values.rotation = factors->rotation;
        values.scale = factors->scale;
        values.shear = factors->shear;
        return values;
    }
};

namespace {

class MemoryTransform3d : public Transform3d
{
    using Values = TransformRecord;

public:
    explicit MemoryTransform3d(ItemProperties properties) : _properties(std::move(properties)) {}

    [[nodiscard]] const Path& path() const override { return _properties.path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _properties.item(); }

    [[nodiscard]] Matrix4d matrix() const override
    {
        const auto* node = _properties.node();
        return node ? matrixOf(*node) : identity();
    }

    [[nodiscard]] Matrix4d segmentInclusiveMatrix() const override
    {
        return toSegment(&existing(*_properties.tree(), *_properties.item()));
    }

    [[nodiscard]] Matrix4d segmentExclusiveMatrix() const override
    {
        return toSegment(existing(*_properties.tree(), *_properties.item()).parent);
    }

    [[nodiscard]] UndoableCommand::Ptr translateCmd(double x, double y, double z) override
    {
        return _properties.setCmd("Translate", &Values::translation, x, y, z);
    }
    [[nodiscard]] Vector3d translation() const override
    {
        return _properties.get(&Values::translation);
    }

    [[nodiscard]] UndoableCommand::Ptr rotateCmd(double x, double y, double z) override
    {
        return _properties.setCmd("Rotate", &Values::rotation, x, y, z);
    }
    [[nodiscard]] Vector3d rotation() const override { return _properties.get(&Values::rotation); }

    [[nodiscard]] UndoableCommand::Ptr scaleCmd(double x, double y, double z) override
    {
        return _properties.setCmd("Scale", &Values::scale, x, y, z);
    }
    [[nodiscard]] Vector3d scale() const override { return _properties.get(&Values::scale); }

    [[nodiscard]] UndoableCommand::Ptr rotatePivotCmd(double x, double y, double z) override
    {
        return _properties.setCmd("Set rotate pivot of", &Values::rotatePivot, x, y, z);
    }
    [[nodiscard]] Vector3d rotatePivot() const override
    {
        return _properties.get(&Values::rotatePivot);
    }

    [[nodiscard]] UndoableCommand::Ptr scalePivotCmd(double x, double y, double z) override
    {
        return _properties.setCmd("Set scale pivot of", &Values::scalePivot, x, y, z);
    }
    [[nodiscard]] Vector3d scalePivot() const override
    {
        return _properties.get(&Values::scalePivot);
    }

    [[nodiscard]] UndoableCommand::Ptr translateRotatePivotCmd(double x, double y,
                                                               double z) override
    {
        return _properties.setCmd("Translate rotate pivot of", &Values::rotatePivotTranslation, x,
                                  y, z);
    }
    [[nodiscard]] Vector3d rotatePivotTranslation() const override
    {
        return _properties.get(&Values::rotatePivotTranslation);
    }

    [[nodiscard]] UndoableCommand::Ptr translateScalePivotCmd(double x, double y, double z) override
    {
        return _properties.setCmd("Translate scale pivot of", &Values::scalePivotTranslation, x, y,
                                  z);
    }
    [[nodiscard]] Vector3d scalePivotTranslation() const override
    {
        return _properties.get(&Values::scalePivotTranslation);
    }

    [[nodiscard]] UndoableCommand::Ptr rotateAxisCmd(double x, double y, double z) override
    {
        return _properties.setCmd("Rotate axis of", &Values::rotateAxis, x, y, z);
    }
    [[nodiscard]] Vector3d rotateAxis() const override
    {
        return _properties.get(&Values::rotateAxis);
    }

    [[nodiscard]] UndoableCommand::Ptr shearCmd(double x, double y, double z) override
    {
        return _properties.setCmd("Shear", &Values::shear, x, y, z);
    }
    [[nodiscard]] Vector3d shear() const override { return _properties.get(&Values::shear); }

    [[nodiscard]] UndoableCommand::Ptr setMatrixCmd(const Matrix4d& matrix) override
    {
        return _properties.setCmd("Set matrix of", Whole<Values>(), matrix);
    }

private:
    /// From the node's space to that of the scene.
    static Matrix4d toSegment(const Node* node) noexcept
    {
        auto matrix = identity();
        for (; node; node = node->parent) {
            if (node->properties.find<Values>()) {
                matrix = matrix * matrixOf(*node);
            }
        }
        return matrix;
    }

    const ItemProperties _properties;
};

class MemoryTransform3dHandler : public Transform3dHandler
{
public:
    explicit MemoryTransform3dHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

    [[nodiscard]] Transform3d::Ptr transform3d(const SceneItem::Ptr& item) const override
    {
        return _tree->find(*item) ? std::make_shared<MemoryTransform3d>(ItemProperties(_tree, item))
                                  : nullptr;
    }

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace

Matrix4d matrixOf(const Node& node) noexcept
{
    const auto* values = node.properties.find<TransformRecord>();
    return values ? composed(*values) : identity();
}

Transform3dHandler::Ptr makeTransform3dHandler(const std::shared_ptr<Tree>& tree)
{
    return std::make_shared<MemoryTransform3dHandler>(tree);
}

} // namespace Kiv_v4::memory
