#pragma once

#include <cstdint>
#include <optional>

#include "kiv/export.h"
#include "kiv/object3d.h"
#include "kiv/transform3dRead.h"

/// Building blocks for authors of run-times.
namespace Kiv_v4::kit {

// Matrices for row vectors, as `Transform3dRead` has them: a point of the item's space goes to
// `point * matrix`, the translation is in the last row, and in a product the matrix on the left is
// applied first: `scale * rotation * translation`, `own * parents`. Products are the `operator*` of
// `Matrix4d`. Angles are in degrees, counter-clockwise when seen against the direction of the axis.

/// Convert angles.
[[nodiscard]] KIV_EXPORT double radians(double degrees) noexcept;
[[nodiscard]] KIV_EXPORT double degrees(double radians) noexcept;

/// Return the identity matrix, and the matrix of a translation.
[[nodiscard]] KIV_EXPORT Matrix4d identity() noexcept;
[[nodiscard]] KIV_EXPORT Matrix4d translationMatrix(const Vector3d& translation) noexcept;

/// The order of the rotations about the axes: with `XYZ` about x first, then y, then z.
enum class RotationOrder : std::uint8_t { XYZ, YZX, ZXY, XZY, YXZ, ZYX };

/// Returns the rotation by these angles about x, y and z, applied in the order `order`. Exact for
/// multiples of right angles.
[[nodiscard]] KIV_EXPORT Matrix4d rotationMatrix(const Vector3d& degrees,
                                                 RotationOrder order = RotationOrder::XYZ) noexcept;

/// Returns the angles about x, y and z for which `rotationMatrix` returns the rotation of `matrix`,
/// to rounding: about the first and last axis from -180 to 180, about the middle one from -90 to
/// 90. If they are not unique, the first angle is 0. The first three rows and columns of `matrix`
/// must be a rotation; the others are not read.
[[nodiscard]] KIV_EXPORT Vector3d rotationAngles(const Matrix4d& matrix,
                                                 RotationOrder order = RotationOrder::XYZ) noexcept;

/// A rotation: the vector (x, y, z) along the axis, whose length is the sine of half the angle, and
/// the cosine of half the angle.
struct Quaternion
{
    /// Along the axis.
    double x = 0;
    double y = 0;
    double z = 0;
    /// The cosine of half the angle.
    double w = 1;
};

/// Returns the rotation of `quaternion`, whose length need not be 1 but must not be 0.
[[nodiscard]] KIV_EXPORT Matrix4d rotationMatrix(const Quaternion& quaternion) noexcept;

/// Returns the quaternion of the rotation of `matrix`, of length 1 and with `w` not below 0.
/// `matrix` must be a rotation as for `rotationAngles`.
[[nodiscard]] KIV_EXPORT Quaternion quaternion(const Matrix4d& matrix) noexcept;

/// Returns the matrix of the scale, then the shear: with the shears xy, xz and yz, x becomes x + xy
/// y + xz z and y becomes y + yz z.
[[nodiscard]] KIV_EXPORT Matrix4d scaleShearMatrix(const Vector3d& scale,
                                                   const Vector3d& shear) noexcept;

/// Apply the operation to each component.
[[nodiscard]] KIV_EXPORT Vector3d operator+(const Vector3d& left, const Vector3d& right) noexcept;
[[nodiscard]] KIV_EXPORT Vector3d operator-(const Vector3d& left, const Vector3d& right) noexcept;
[[nodiscard]] KIV_EXPORT Vector3d operator-(const Vector3d& vector) noexcept;

/// The factors of scaleShearMatrix(scale, shear) * rotationMatrix(rotation) *
/// translationMatrix(translation); at first those of the identity.
struct AffineFactors
{
    /// Along x, y and z.
    Vector3d scale{{1, 1, 1}};
    /// The shears xy, xz and yz.
    Vector3d shear;
    /// In degrees about x, then y, then z.
    Vector3d rotation;
    /// In the units of the scene.
    Vector3d translation;
};

/// Returns the product of the factors.
[[nodiscard]] KIV_EXPORT Matrix4d composed(const AffineFactors& factors) noexcept;

/// Returns the factors whose product is `matrix`, to rounding. A reflection makes the scale in x
/// negative; all other scales are positive. Returns `std::nullopt` if the matrix is singular to
/// rounding, has a last column other than (0, 0, 0, 1), or contains NaN or infinity.
[[nodiscard]] KIV_EXPORT std::optional<AffineFactors> decomposed(const Matrix4d& matrix) noexcept;

/// Returns the matrix whose product with `matrix` is the identity, to rounding. Returns
/// `std::nullopt` if the matrix is singular, has a last column other than (0, 0, 0, 1), or contains
/// NaN or infinity, or if its inverse would contain them.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> inverse(const Matrix4d& matrix) noexcept;

/// Returns the matrix of an item at `eye`, such as a camera or a light, whose -z axis points at
/// `target` and whose y axis is as close to `up` as possible. Returns `std::nullopt` if that is not
/// determined: `eye` is at `target`, or `up` is 0 or along the line between them.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> lookAt(const Vector3d& eye, const Vector3d& target,
                                                        const Vector3d& up = {{0, 1, 0}}) noexcept;

/// Return the transformed point, and the transformed direction, which is not translated.
[[nodiscard]] KIV_EXPORT Vector3d transformedPoint(const Vector3d& point,
                                                   const Matrix4d& matrix) noexcept;
[[nodiscard]] KIV_EXPORT Vector3d transformedDirection(const Vector3d& direction,
                                                       const Matrix4d& matrix) noexcept;

/// Returns the smallest axis-aligned box around the transformed box.
[[nodiscard]] KIV_EXPORT BoundingBox3d transformed(const BoundingBox3d& box,
                                                   const Matrix4d& matrix);

} // namespace Kiv_v4::kit
