#include "kiv/kit/affine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace Kiv_v4::kit {

namespace {

constexpr auto kDegreesPerRadian = 180 / std::numbers::pi;

/// A number below this, relative to its operands, is a rounding error.
constexpr auto kRounding = 8 * std::numeric_limits<double>::epsilon();

/// How far a last column may be from (0, 0, 0, 1), as after the inversion of a matrix.
constexpr auto kLastColumnTolerance = 1e-12;

using MatrixRow = std::array<double, 3>;

struct SineCosine
{
    double sine;
    double cosine;
};

SineCosine sineCosine(double degrees) noexcept
{
    auto quarters = 0;
    const auto angle = std::remquo(degrees, 90.0, &quarters) / kDegreesPerRadian;
    const auto sine = std::sin(angle);
    const auto cosine = std::cos(angle);
    switch (quarters & 3) {
    case 0:
        return {sine, cosine};
    case 1:
        return {cosine, -sine};
    case 2:
        return {-sine, -cosine};
    default:
        return {-cosine, sine};
    }
}

double dot(const MatrixRow& left, const MatrixRow& right) noexcept
{
    return left[0] * right[0] + left[1] * right[1] + left[2] * right[2];
}

double length(const MatrixRow& row) noexcept
{
    return std::hypot(row[0], row[1], row[2]);
}

MatrixRow scaled(const MatrixRow& row, double factor) noexcept
{
    return {row[0] * factor, row[1] * factor, row[2] * factor};
}

MatrixRow without(const MatrixRow& row, const MatrixRow& unit) noexcept
{
    const auto along = dot(row, unit);
    return {row[0] - along * unit[0], row[1] - along * unit[1], row[2] - along * unit[2]};
}

MatrixRow cross(const MatrixRow& a, const MatrixRow& b) noexcept
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

MatrixRow linearRow(const Matrix4d& matrix, std::size_t row) noexcept
{
    const auto& elements = matrix.matrix[row];
    return {elements[0], elements[1], elements[2]};
}

bool isFinite(const MatrixRow& row) noexcept
{
    return std::isfinite(row[0]) && std::isfinite(row[1]) && std::isfinite(row[2]);
}

Matrix4d fromRows(const MatrixRow& first, const MatrixRow& second, const MatrixRow& third,
                  const MatrixRow& last) noexcept
{
    return {{{{first[0], first[1], first[2], 0},
              {second[0], second[1], second[2], 0},
              {third[0], third[1], third[2], 0},
              {last[0], last[1], last[2], 1}}}};
}

bool isAffine(const Matrix4d& matrix) noexcept
{
    for (std::size_t row = 0; row < 4; ++row) {
        const auto& elements = matrix.matrix[row];
        const auto finite = std::all_of(elements.begin(), elements.end(),
                                        [](double element) { return std::isfinite(element); });
        if (!finite || std::abs(elements[3] - (row == 3 ? 1 : 0)) > kLastColumnTolerance) {
            return false;
        }
    }
    return true;
}

/// The axes in the order of the rotations. An odd order is the mirror image of an even one, with
/// the rotations reversed.
struct Axes
{
    explicit Axes(RotationOrder order) noexcept
        : isOdd(order >= RotationOrder::XZY), first(static_cast<std::size_t>(order) % 3),
          second((first + (isOdd ? 2 : 1)) % 3), third((first + (isOdd ? 1 : 2)) % 3)
    {}

    bool isOdd;
    std::size_t first;
    std::size_t second;
    std::size_t third;
};

/// The angles about x, then y, then z of the rotation with these rows. The second and third are
/// computed after the first was divided out, so they compensate for its rounding, however near y is
/// to a right angle.
Vector3d anglesOf(const MatrixRow& first, const MatrixRow& second, const MatrixRow& third) noexcept
{
    const auto cosineY = std::hypot(second[2], third[2]);
    const auto x = cosineY > kRounding ? std::atan2(second[2], third[2]) : 0.0;
    const auto sineX = std::sin(x);
    const auto cosineX = std::cos(x);
    const auto y = std::atan2(-first[2], cosineY);
    const auto z =
        std::atan2(sineX * third[0] - cosineX * second[0], cosineX * second[1] - sineX * third[1]);
    // No angle is -0, since users would see it.
    return Vector3d({x * kDegreesPerRadian, y * kDegreesPerRadian, z * kDegreesPerRadian}) +
           Vector3d();
}

} // namespace

double radians(double degrees) noexcept
{
    return degrees / kDegreesPerRadian;
}

double degrees(double radians) noexcept
{
    return radians * kDegreesPerRadian;
}

Matrix4d identity() noexcept
{
    return translationMatrix({});
}

Matrix4d translationMatrix(const Vector3d& translation) noexcept
{
    const auto& [x, y, z] = translation.vector;
    return {{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {x, y, z, 1}}}};
}

Matrix4d rotationMatrix(const Vector3d& degrees, RotationOrder order) noexcept
{
    const Axes axes(order);
    const auto sign = axes.isOdd ? -1.0 : 1.0;
    const auto [sx, cx] = sineCosine(sign * degrees.vector[axes.first]);
    const auto [sy, cy] = sineCosine(sign * degrees.vector[axes.second]);
    const auto [sz, cz] = sineCosine(sign * degrees.vector[axes.third]);
    const MatrixRow rows[] = {{cy * cz, cy * sz, -sy},
                              {sx * sy * cz - cx * sz, sx * sy * sz + cx * cz, sx * cy},
                              {cx * sy * cz + sx * sz, cx * sy * sz - sx * cz, cx * cy}};
    auto result = identity();
    const std::size_t places[] = {axes.first, axes.second, axes.third};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            result.matrix[places[row]][places[column]] = rows[row][column];
        }
    }
    return result;
}

Vector3d rotationAngles(const Matrix4d& matrix, RotationOrder order) noexcept
{
    const Axes axes(order);
    const auto row = [&](std::size_t axis) -> MatrixRow {
        const auto& elements = matrix.matrix[axis];
        return {elements[axes.first], elements[axes.second], elements[axes.third]};
    };
    const auto angles = anglesOf(row(axes.first), row(axes.second), row(axes.third));
    Vector3d result;
    result.vector[axes.first] = angles.vector[0];
    result.vector[axes.second] = angles.vector[1];
    result.vector[axes.third] = angles.vector[2];
    return axes.isOdd ? Vector3d() - result : result;
}

Matrix4d rotationMatrix(const Quaternion& quaternion) noexcept
{
    // Divided by the largest first, so that no square overflows or underflows.
    const auto largest = std::max({std::abs(quaternion.x), std::abs(quaternion.y),
                                   std::abs(quaternion.z), std::abs(quaternion.w)});
    const auto x = quaternion.x / largest;
    const auto y = quaternion.y / largest;
    const auto z = quaternion.z / largest;
    const auto w = quaternion.w / largest;
    const auto twice = 2 / (x * x + y * y + z * z + w * w);
    return fromRows({1 - twice * (y * y + z * z), twice * (x * y + z * w), twice * (x * z - y * w)},
                    {twice * (x * y - z * w), 1 - twice * (x * x + z * z), twice * (y * z + x * w)},
                    {twice * (x * z + y * w), twice * (y * z - x * w), 1 - twice * (x * x + y * y)},
                    {});
}

Quaternion quaternion(const Matrix4d& matrix) noexcept
{
    const auto& m = matrix.matrix;
    const auto trace = m[0][0] + m[1][1] + m[2][2];
    // One of the four is at least a half; the others are read relative to the largest.
    std::array<double, 4> q{};
    if (trace >= std::max({m[0][0], m[1][1], m[2][2]})) {
        q = {m[1][2] - m[2][1], m[2][0] - m[0][2], m[0][1] - m[1][0], 1 + trace};
    } else {
        const std::size_t i = m[0][0] >= std::max(m[1][1], m[2][2]) ? 0
                              : m[1][1] >= m[2][2]                  ? 1
                                                                    : 2;
        const auto j = (i + 1) % 3;
        const auto k = (i + 2) % 3;
        q[i] = 1 + m[i][i] - m[j][j] - m[k][k];
        q[j] = m[i][j] + m[j][i];
        q[k] = m[i][k] + m[k][i];
        q[3] = m[j][k] - m[k][j];
    }
    const auto size =
        std::copysign(std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]), q[3]);
    return {q[0] / size, q[1] / size, q[2] / size, q[3] / size};
}

Matrix4d scaleShearMatrix(const Vector3d& scale, const Vector3d& shear) noexcept
{
    const auto& [x, y, z] = scale.vector;
    const auto& [xy, xz, yz] = shear.vector;
    return {{{{x, 0, 0, 0}, {y * xy, y, 0, 0}, {z * xz, z * yz, z, 0}, {0, 0, 0, 1}}}};
}

Vector3d operator+(const Vector3d& left, const Vector3d& right) noexcept
{
    const auto& [x, y, z] = left.vector;
    return {{x + right.vector[0], y + right.vector[1], z + right.vector[2]}};
}

Vector3d operator-(const Vector3d& left, const Vector3d& right) noexcept
{
    const auto& [x, y, z] = left.vector;
    return {{x - right.vector[0], y - right.vector[1], z - right.vector[2]}};
}

Vector3d operator-(const Vector3d& vector) noexcept
{
    return {{-vector.vector[0], -vector.vector[1], -vector.vector[2]}};
}

Matrix4d composed(const AffineFactors& factors) noexcept
{
    return scaleShearMatrix(factors.scale, factors.shear) * rotationMatrix(factors.rotation) *
           translationMatrix(factors.translation);
}

std::optional<AffineFactors> decomposed(const Matrix4d& matrix) noexcept
{
    if (!isAffine(matrix)) {
        return std::nullopt;
    }
    const auto a = linearRow(matrix, 0);
    const auto b = linearRow(matrix, 1);
    const auto c = linearRow(matrix, 2);

    auto scaleX = length(a);
    auto first = scaled(a, 1 / scaleX);
    // Twice, since the first pass leaves rounding errors in a nearly parallel row.
    const auto upright = without(without(b, first), first);
    const auto scaleY = length(upright);
    const auto second = scaled(upright, 1 / scaleY);
    auto third = cross(first, second);
    auto scaleZ = dot(c, third);
    if (!(scaleX > 0) || !(scaleY > kRounding * length(b)) ||
        !(std::abs(scaleZ) > kRounding * length(c))) {
        return std::nullopt;
    }
    if (scaleZ < 0) {
        scaleX = -scaleX;
        scaleZ = -scaleZ;
        first = scaled(first, -1);
        third = scaled(third, -1);
    }
    AffineFactors factors;
    factors.scale = {{scaleX, scaleY, scaleZ}};
    factors.shear = {{dot(b, first) / scaleY, dot(c, first) / scaleZ, dot(c, second) / scaleZ}};
    factors.rotation = anglesOf(first, second, third);
    factors.translation = {linearRow(matrix, 3)};
    return isFinite(factors.scale.vector) && isFinite(factors.shear.vector) &&
                   isFinite(factors.rotation.vector)
               ? std::optional(factors)
               : std::nullopt;
}

std::optional<Matrix4d> inverse(const Matrix4d& matrix) noexcept
{
    if (!isAffine(matrix)) {
        return std::nullopt;
    }
    // Each row is made 1 long first, so that neither large nor small scales are lost.
    std::array<MatrixRow, 3> rows{};
    MatrixRow lengths{};
    for (std::size_t row = 0; row < 3; ++row) {
        rows[row] = linearRow(matrix, row);
        lengths[row] = length(rows[row]);
        rows[row] = scaled(rows[row], 1 / lengths[row]);
    }
    const MatrixRow columns[] = {cross(rows[1], rows[2]), cross(rows[2], rows[0]),
                                 cross(rows[0], rows[1])};
    const auto determinant = dot(rows[0], columns[0]);
    if (!(std::abs(determinant) > kRounding)) { // NaN after a row of zeros
        return std::nullopt;
    }
    auto result = identity();
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            result.matrix[row][column] = columns[column][row] / determinant / lengths[column];
        }
    }
    const auto back = transformedDirection({linearRow(matrix, 3)}, result);
    for (std::size_t column = 0; column < 3; ++column) {
        result.matrix[3][column] = 0 - back.vector[column];
    }
    return isAffine(result) ? std::optional(result) : std::nullopt;
}

std::optional<Matrix4d> lookAt(const Vector3d& eye, const Vector3d& target,
                               const Vector3d& up) noexcept
{
    const auto unit = [](const MatrixRow& row) { return scaled(row, 1 / length(row)); };
    const auto back = unit((eye - target).vector);
    const auto across = cross(unit(up.vector), back);
    const auto right = unit(across);
    if (!(length(across) > kRounding) || !isFinite(right) || !isFinite(eye.vector)) {
        return std::nullopt;
    }
    return fromRows(right, cross(back, right), back, eye.vector);
}

Vector3d transformedPoint(const Vector3d& point, const Matrix4d& matrix) noexcept
{
    return transformedDirection(point, matrix) + Vector3d({linearRow(matrix, 3)});
}

Vector3d transformedDirection(const Vector3d& direction, const Matrix4d& matrix) noexcept
{
    const auto& [x, y, z] = direction.vector;
    const auto& m = matrix.matrix;
    return {{x * m[0][0] + y * m[1][0] + z * m[2][0], x * m[0][1] + y * m[1][1] + z * m[2][1],
             x * m[0][2] + y * m[1][2] + z * m[2][2]}};
}

BoundingBox3d transformed(const BoundingBox3d& box, const Matrix4d& matrix)
{
    if (box.empty()) {
        return {};
    }
    BoundingBox3d result;
    for (std::size_t column = 0; column < 3; ++column) {
        auto least = matrix.matrix[3][column];
        auto most = least;
        for (std::size_t row = 0; row < 3; ++row) {
            const auto factor = matrix.matrix[row][column];
            const auto [low, high] =
                std::minmax({factor * box.min.vector[row], factor * box.max.vector[row]});
            least += low;
            most += high;
        }
        result.min.vector[column] = least;
        result.max.vector[column] = most;
    }
    return result;
}

} // namespace Kiv_v4::kit
