#include "kiv/host/matrix.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/object3d.h"

namespace Kiv_v4::host {

namespace {

using Row = std::array<double, 4>;
using MatrixRows = std::array<Row, 4>;

void scale(Row& row, double factor)
{
    for (auto& element : row) {
        element *= factor;
    }
}

void subtract(Row& row, const Row& other, double factor)
{
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] -= factor * other[i];
    }
}

/// The row from `column` on whose element in that column is the largest.
std::size_t pivotRow(const MatrixRows& rows, std::size_t column)
{
    auto pivot = column;
    for (auto row = column + 1; row < rows.size(); ++row) {
        if (std::abs(rows[row][column]) > std::abs(rows[pivot][column])) {
            pivot = row;
        }
    }
    return pivot;
}

/// False also for NaN.
bool isNearIdentity(const Matrix4d& matrix)
{
    constexpr auto kTolerance = 1e-6; // the result for a singular matrix is far larger
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            const auto wanted = row == column ? 1.0 : 0.0;
            if (!(std::abs(matrix.matrix[row][column] - wanted) < kTolerance)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

std::optional<Matrix4d> inverse(const Matrix4d& matrix)
{
    auto left = matrix.matrix; // becomes the identity by row operations, which `right` makes too
    MatrixRows right{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    for (std::size_t column = 0; column < left.size(); ++column) {
        const auto pivot = pivotRow(left, column);
        std::swap(left[column], left[pivot]);
        std::swap(right[column], right[pivot]);
        const auto factor = 1 / left[column][column];
        scale(left[column], factor);
        scale(right[column], factor);
        for (std::size_t row = 0; row < left.size(); ++row) {
            if (row != column) {
                const auto part = left[row][column];
                subtract(left[row], left[column], part);
                subtract(right[row], right[column], part);
            }
        }
    }
    const Matrix4d result(std::move(right));
    return isNearIdentity(result * matrix) ? std::optional(result) : std::nullopt;
}

Path gatewayWithoutTransform(Path path)
{
    while (path.nbSegments() > 1) {
        path = path.popSegment();
        if (!Transform3dRead::transform3dRead(Hierarchy::createItem(path))) {
            return path;
        }
    }
    return {};
}

std::optional<Matrix4d> worldMatrix(const SceneItem::Ptr& item)
{
    const auto transform = Transform3dRead::transform3dRead(item);
    if (!transform || !gatewayWithoutTransform(item->path()).empty()) {
        return std::nullopt;
    }
    return transform->inclusiveMatrix();
}

std::optional<Matrix4d> ownMatrix(const SceneItem::Ptr& item, const Matrix4d& world)
{
    const auto transform = Transform3dRead::transform3dRead(item);
    if (!transform || !gatewayWithoutTransform(item->path()).empty()) {
        return std::nullopt;
    }
    const auto fromWorld = inverse(transform->exclusiveMatrix());
    return fromWorld ? std::optional(world * *fromWorld) : std::nullopt;
}

std::optional<BoundingBox3d> worldBox(const SceneItem::Ptr& item)
{
    const auto object = Object3d::object3d(item);
    const auto matrix = worldMatrix(item);
    if (!object || !matrix) {
        return std::nullopt;
    }
    const auto own = object->boundingBox();
    BoundingBox3d box;
    for (unsigned corner = 0; corner < 8 && !own.empty(); ++corner) {
        TypedVectorN<double, 3> point(
            {matrix->matrix[3][0], matrix->matrix[3][1], matrix->matrix[3][2]});
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const auto& end = (corner >> axis & 1U) != 0 ? own.max : own.min;
            for (std::size_t column = 0; column < 3; ++column) {
                point.vector[column] += end.vector[axis] * matrix->matrix[axis][column];
            }
        }
        box.extend(point);
    }
    return box;
}

} // namespace Kiv_v4::host
