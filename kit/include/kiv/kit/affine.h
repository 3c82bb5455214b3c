#pragma once

#include <optional>

#include "kiv/export.h"
#include "kiv/object3d.h"
#include "kiv/transform3dRead.h"

/// What authors of run-times build on.
namespace Kiv_v4::kit {

// Matrices for row vectors, with the translation in the last row. Angles are in degrees.

[[nodiscard]] KIV_EXPORT Matrix4d identity() noexcept;
[[nodiscard]] KIV_EXPORT Matrix4d translationMatrix(const Vector3d& translation) noexcept;

/// About x, then y, then z. Exact for multiples of right angles.
[[nodiscard]] KIV_EXPORT Matrix4d rotationMatrix(const Vector3d& degrees) noexcept;

/// The scale, then the shear: with the shears xy, xz and yz, x becomes x + xy y + xz z and y
/// becomes y + yz z.
[[nodiscard]] KIV_EXPORT Matrix4d scaleShearMatrix(const Vector3d& scale,
                                                   const Vector3d& shear) noexcept;

[[nodiscard]] KIV_EXPORT Vector3d operator+(const Vector3d& left, const Vector3d& right) noexcept;
[[nodiscard]] KIV_EXPORT Vector3d operator-(const Vector3d& left, const Vector3d& right) noexcept;
[[nodiscard]] KIV_EXPORT Vector3d operator-(const Vector3d& vector) noexcept;

/// The factors of scaleShearMatrix(scale, shear) * rotationMatrix(rotation) *
/// translationMatrix(translation).
struct AffineFactors
{
    Vector3d scale;
    Vector3d shear;
    Vector3d rotation;
    Vector3d translation;
};

/// The factors whose product is `matrix`, to rounding. A reflection is put into the scale in x,
/// other scales are positive. None when the matrix is singular to rounding, has a last column other
/// than (0, 0, 0, 1), or holds something that is no finite number.
[[nodiscard]] KIV_EXPORT std::optional<AffineFactors> decomposed(const Matrix4d& matrix) noexcept;

/// The smallest box around the box after the transform.
[[nodiscard]] KIV_EXPORT BoundingBox3d transformed(const BoundingBox3d& box,
                                                   const Matrix4d& matrix);

} // namespace Kiv_v4::kit
