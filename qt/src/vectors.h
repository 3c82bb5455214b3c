#pragma once

#include <cmath>

#include "kiv/mathTypes.h"
#include "kiv/object3d.h"

namespace Kiv_v4::qt::detail {

[[nodiscard]] inline Vector3d sum(const Vector3d& a, const Vector3d& b, double factor = 1) noexcept
{
    return {{a.vector[0] + factor * b.vector[0], a.vector[1] + factor * b.vector[1],
             a.vector[2] + factor * b.vector[2]}};
}

[[nodiscard]] inline Vector3d scaled(const Vector3d& a, double factor) noexcept
{
    return sum({}, a, factor);
}

[[nodiscard]] inline double dot(const Vector3d& a, const Vector3d& b) noexcept
{
    return a.vector[0] * b.vector[0] + a.vector[1] * b.vector[1] + a.vector[2] * b.vector[2];
}

[[nodiscard]] inline Vector3d cross(const Vector3d& a, const Vector3d& b) noexcept
{
    const auto& [ax, ay, az] = a.vector;
    const auto& [bx, by, bz] = b.vector;
    return {{ay * bz - az * by, az * bx - ax * bz, ax * by - ay * bx}};
}

[[nodiscard]] inline double length(const Vector3d& a) noexcept
{
    return std::sqrt(dot(a, a));
}

[[nodiscard]] inline Vector3d middle(const BoundingBox3d& box) noexcept
{
    return scaled(sum(box.min, box.max), 0.5);
}

/// Zero for a vector without a length.
[[nodiscard]] inline Vector3d unit(const Vector3d& a) noexcept
{
    const auto size = length(a);
    return size > 0 && std::isfinite(size) ? scaled(a, 1 / size) : Vector3d();
}

/// The axis of the matrix: where it takes the unit vector of that axis, from the origin's image.
[[nodiscard]] inline Vector3d axis(const Matrix4d& matrix, std::size_t index) noexcept
{
    const auto& row = matrix.matrix[index];
    return {{row[0], row[1], row[2]}};
}

/// Where the matrix takes a direction, or for a weight of 1 a point.
[[nodiscard]] inline Vector3d image(const Vector3d& a, const Matrix4d& matrix,
                                    double weight = 1) noexcept
{
    auto result = scaled(axis(matrix, 3), weight);
    for (std::size_t i = 0; i < 3; ++i) {
        result = sum(result, axis(matrix, i), a.vector[i]);
    }
    return result;
}

} // namespace Kiv_v4::qt::detail
