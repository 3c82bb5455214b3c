#include "assimpTransform.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Kiv_v4::assimp {

namespace {

using Factors = kit::AffineFactors;

/// From the node's space to that of the file.
Matrix4d matrixToFile(const SceneFile& file, const Edits& edits, NodeIndex index)
{
    auto matrix = matrixOf(file, edits, index);
    while (index != SceneFile::kRoot) {
        index = file.node(index).parent;
        matrix = matrix * matrixOf(file, edits, index);
    }
    return matrix;
}

bool isFinite(double x, double y, double z)
{
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(z);
}

/// Whether the last column is exactly that of an affine matrix.
bool isAffine(const Matrix4d& matrix)
{
    const auto& rows = matrix.matrix;
    return rows[0][3] == 0 && rows[1][3] == 0 && rows[2][3] == 0 && rows[3][3] == 1;
}

/// Sets a factor other than the translation, whose row of the matrix stays exact.
template <Vector3d Factors::*factor>
bool setFactor(TransformRecord& record, double x, double y, double z)
{
    if (!record.factors || !isFinite(x, y, z)) {
        return false;
    }
    auto& factors = *record.factors;
    factors.*factor = {{x, y, z}};
    const auto translation = record.matrix.matrix[3];
    record.matrix =
        kit::scaleShearMatrix(factors.scale, factors.shear) * kit::rotationMatrix(factors.rotation);
    record.matrix.matrix[3] = translation;
    return true;
}

/// A matrix without factors can be translated, too, if it is affine.
bool setTranslation(TransformRecord& record, double x, double y, double z)
{
    if ((!record.factors && !isAffine(record.matrix)) || !isFinite(x, y, z)) {
        return false;
    }
    if (record.factors) {
        record.factors->translation = {{x, y, z}};
    }
    auto& row = record.matrix.matrix[3];
    row = {x, y, z, row[3]};
    return true;
}

bool setWhole(TransformRecord& record, const Matrix4d& matrix)
{
    const auto factors = kit::decomposed(matrix);
    if (factors) {
        record = {matrix, factors};
    }
    return factors.has_value();
}

class AssimpTransform3d : public Transform3d
{
    using Cmd = UndoableCommand::Ptr;

public:
    explicit AssimpTransform3d(MountedNode node) : _node(std::move(node)) {}

    [[nodiscard]] const Path& path() const override { return _node.item()->path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _node.item(); }

    [[nodiscard]] Matrix4d matrix() const override
    {
        return matrixOf(_node.file(), _node.edits(), _node.index());
    }

    [[nodiscard]] Matrix4d segmentInclusiveMatrix() const override
    {
        return matrixToFile(_node.file(), _node.edits(), _node.index());
    }

    [[nodiscard]] Matrix4d segmentExclusiveMatrix() const override
    {
        return _node.index() == SceneFile::kRoot
                   ? kit::identity()
                   : matrixToFile(_node.file(), _node.edits(),
                                  _node.file().node(_node.index()).parent);
    }

    [[nodiscard]] Cmd translateCmd(double x, double y, double z) override
    {
        return _node.changeCmd<SetDouble3UndoableCommand>("Translate", &setTranslation, x, y, z);
    }

    [[nodiscard]] Vector3d translation() const override
    {
        const auto row = matrix().matrix[3];
        return {{row[0], row[1], row[2]}};
    }

    [[nodiscard]] Cmd rotateCmd(double x, double y, double z) override
    {
        return factorCmd<&Factors::rotation>("Rotate", x, y, z);
    }
    [[nodiscard]] Vector3d rotation() const override { return factors().rotation; }

    [[nodiscard]] Cmd scaleCmd(double x, double y, double z) override
    {
        return factorCmd<&Factors::scale>("Scale", x, y, z);
    }
    [[nodiscard]] Vector3d scale() const override { return factors().scale; }

    [[nodiscard]] Cmd shearCmd(double x, double y, double z) override
    {
        return factorCmd<&Factors::shear>("Shear", x, y, z);
    }
    [[nodiscard]] Vector3d shear() const override { return factors().shear; }

    [[nodiscard]] Cmd rotatePivotCmd(double, double, double) override { return nullptr; }
    [[nodiscard]] Vector3d rotatePivot() const override { return {}; }

    [[nodiscard]] Cmd scalePivotCmd(double, double, double) override { return nullptr; }
    [[nodiscard]] Vector3d scalePivot() const override { return {}; }

    [[nodiscard]] Cmd setMatrixCmd(const Matrix4d& matrix) override
    {
        return _node.changeCmd<SetMatrix4dUndoableCommand>("Set matrix of", &setWhole, matrix);
    }

private:
    template <Vector3d Factors::*factor>
    [[nodiscard]] Cmd factorCmd(const std::string& verb, double x, double y, double z) const
    {
        return _node.changeCmd<SetDouble3UndoableCommand>(verb, &setFactor<factor>, x, y, z);
    }

    /// Those of the identity if the matrix has none.
    [[nodiscard]] Factors factors() const
    {
        Factors none;
        none.scale = {{1, 1, 1}};
        return _node.get<TransformRecord>().factors.value_or(none);
    }

    const MountedNode _node;
};

class AssimpTransform3dHandler : public Transform3dHandler
{
public:
    explicit AssimpTransform3dHandler(std::shared_ptr<const Mounts> mounts)
        : _mounts(std::move(mounts))
    {}

    [[nodiscard]] Transform3d::Ptr transform3d(const SceneItem::Ptr& item) const override
    {
        const auto node = _mounts->node(item);
        return node ? std::make_shared<AssimpTransform3d>(*node) : nullptr;
    }

private:
    const std::shared_ptr<const Mounts> _mounts;
};

} // namespace

Matrix4d matrixOf(const SceneFile& file, const Edits& edits, NodeIndex index)
{
    const auto* edited = edits.find<TransformRecord>(index);
    return edited ? edited->matrix : file.contents().matrix(index);
}

Transform3dHandler::Ptr makeTransform3dHandler(const std::shared_ptr<const Mounts>& mounts)
{
    return std::make_shared<AssimpTransform3dHandler>(mounts);
}

} // namespace Kiv_v4::assimp
