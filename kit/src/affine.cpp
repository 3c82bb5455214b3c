#include "kiv/kit/affine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace Kiv_v4::kit {

namespace {

constexpr auto kDegreesPerRadian = 180 / std::numbers::pi;

/// Below this, relative to what it was computed from, a number is nothing but rounding.
constexpr auto kRounding = 8 * std::numeric_limits<double>::epsilon();

/// How far a last column may be from (0, 0, 0, 1), as after the inversion of a matrix.
constexpr auto kLastColumnTolerance = 1e-12;

using Row = std::array<double, 3>;

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

double dot(const Row& left, const Row& right) noexcept
{
    return left[0] * right[0] + left[1] * right[1] + left[2] * right[2];
}

double length(const Row& row) noexcept
{
    return std::hypot(row[0], row[1], row[2]);
}

Row scaled(const Row& row, double factor) noexcept
{
    return {row[0] * factor, row[1] * factor, row[2] * factor};
}

Row without(const Row& row, const Row& unit) noexcept
{
    const auto along = dot(row, unit);
    return {row[0] - along * unit[0], row[1] - along * unit[1], row[2] - along * unit[2]};
}

Row cross(const Row& a, const Row& b) noexcept
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Row linearRow(const Matrix4d& matrix, std::size_t row) noexcept
{
    const auto& elements = matrix.matrix[row];
    return {elements[0], elements[1], elements[2]};
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

/// The angles of the rotation with these rows. The second and third are read after the first has
/// been taken out, so they make up for its rounding, however near y is to a right angle.
Vector3d anglesOf(const Row& first, const Row& second, const Row& third) noexcept
{
    const auto cosineY = std::hypot(second[2], third[2]);
    const auto x = cosineY > kRounding ? std::atan2(second[2], third[2]) : 0.0;
    const auto sineX = std::sin(x);
    const auto cosineX = std::cos(x);
    const auto y = std::atan2(-first[2], cosineY);
    const auto z =
        std::atan2(sineX * third[0] - cosineX * second[0], cosineX * second[1] - sineX * third[1]);
    // No angle of -0: users would see it.
    return Vector3d({x * kDegreesPerRadian, y * kDegreesPerRadian, z * kDegreesPerRadian}) +
           Vector3d();
}

} // namespace

Matrix4d identity() noexcept
{
    return translationMatrix({});
}

Matrix4d translationMatrix(const Vector3d& translation) noexcept
{
    const auto& [x, y, z] = translation.vector;
    return {{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {x, y, z, 1}}}};
}

Matrix4d rotationMatrix(const Vector3d& degrees) noexcept
{
    const auto [sx, cx] = sineCosine(degrees.vector[0]);
    const auto [sy, cy] = sineCosine(degrees.vector[1]);
    const auto [sz, cz] = sineCosine(degrees.vector[2]);
    return {{{{cy * cz, cy * sz, -sy, 0},
              {sx * sy * cz - cx * sz, sx * sy * sz + cx * cz, sx * cy, 0},
              {cx * sy * cz + sx * sz, cx * sy * sz - sx * cz, cx * cy, 0},
              {0, 0, 0, 1}}}};
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
    return left + -right;
}

Vector3d operator-(const Vector3d& vector) noexcept
{
    return {{-vector.vector[0], -vector.vector[1], -vector.vector[2]}};
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
    // Twice, since the first time leaves what was rounded of a nearly parallel row.
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
    const auto finite = [](const Vector3d& vector) {
        return std::isfinite(vector.vector[0]) && std::isfinite(vector.vector[1]) &&
               std::isfinite(vector.vector[2]);
    };
    return finite(factors.scale) && finite(factors.shear) && finite(factors.rotation)
               ? std::optional(factors)
               : std::nullopt;
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
