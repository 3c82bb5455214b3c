#pragma once

#include <cstdint>
#include <optional>

#include "kiv/export.h"
#include "kiv/object3d.h"
#include "kiv/transform3dRead.h"

/// What authors of run-times build on.
namespace Kiv_v4::kit {

// Matrices for row vectors, as `Transform3dRead` has them: a point of the item's space goes to
// `point * matrix`, the translation is in the last row, and what is applied first stands to the
// left in a product: `scale * rotation * translation`, `own * parents`. Products are the
// `operator*` of `Matrix4d`. Angles are in degrees, counter-clockwise for an eye that looks against
// the axis.

/// Converts angles.
[[nodiscard]] KIV_EXPORT double radians(double degrees) noexcept;
[[nodiscard]] KIV_EXPORT double degrees(double radians) noexcept;

/// Returns the matrix that changes nothing, and the one that moves.
[[nodiscard]] KIV_EXPORT Matrix4d identity() noexcept;
[[nodiscard]] KIV_EXPORT Matrix4d translationMatrix(const Vector3d& translation) noexcept;

/// The order in which the axes are turned about: with `XYZ` about x first, then y, then z.
enum class RotationOrder : std::uint8_t { XYZ, YZX, ZXY, XZY, YXZ, ZYX };

/// The rotation by these angles about x, y and z, whatever the order. Exact for multiples of right
/// angles.
[[nodiscard]] KIV_EXPORT Matrix4d rotationMatrix(const Vector3d& degrees,
                                                 RotationOrder order = RotationOrder::XYZ) noexcept;

/// The angles about x, y and z, those about the first and last axis from -180 to 180 and that about
/// the middle one from -90 to 90, for which `rotationMatrix` gives the rotation of `matrix`, to
/// rounding. Where that is not unique, the first angle is 0. `matrix` must be a rotation as to its
/// first three rows and columns; the others are not read.
[[nodiscard]] KIV_EXPORT Vector3d rotationAngles(const Matrix4d& matrix,
                                                 RotationOrder order = RotationOrder::XYZ) noexcept;

/// A rotation: (x, y, z) along the axis, as long as the sine of half the angle, and its cosine.
struct Quaternion
{
    /// Along the axis.
    double x = 0;
    double y = 0;
    double z = 0;
    /// The cosine of half the angle.
    double w = 1;
};

/// The rotation of `quaternion`, which need not be of length 1 but must not be 0.
[[nodiscard]] KIV_EXPORT Matrix4d rotationMatrix(const Quaternion& quaternion) noexcept;

/// The quaternion, of length 1 and with `w` not below 0, of the rotation of `matrix`, which must be
/// one as for `rotationAngles`.
[[nodiscard]] KIV_EXPORT Quaternion quaternion(const Matrix4d& matrix) noexcept;

/// The scale, then the shear: with the shears xy, xz and yz, x becomes x + xy y + xz z and y
/// becomes y + yz z.
[[nodiscard]] KIV_EXPORT Matrix4d scaleShearMatrix(const Vector3d& scale,
                                                   const Vector3d& shear) noexcept;

/// Work on each component.
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

/// The product of the factors.
[[nodiscard]] KIV_EXPORT Matrix4d composed(const AffineFactors& factors) noexcept;

/// The factors whose product is `matrix`, to rounding. A reflection is put into the scale in x,
/// other scales are positive. None when the matrix is singular to rounding, has a last column other
/// than (0, 0, 0, 1), or holds something that is no finite number.
[[nodiscard]] KIV_EXPORT std::optional<AffineFactors> decomposed(const Matrix4d& matrix) noexcept;

/// The matrix whose product with `matrix` is the identity, to rounding. None when the matrix is
/// singular, has a last column other than (0, 0, 0, 1), or holds something that is no finite
/// number, or when the inverse would.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> inverse(const Matrix4d& matrix) noexcept;

/// The matrix of an item at `eye` whose -z axis points at `target`, as that of a camera or a light
/// does, and whose y axis points as much along `up` as it then can. None when that is not
/// determined: `eye` is at `target`, or `up` is 0 or along the line between them.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> lookAt(const Vector3d& eye, const Vector3d& target,
                                                        const Vector3d& up = {{0, 1, 0}}) noexcept;

/// Where the matrix takes a point, and a direction, which is not translated.
[[nodiscard]] KIV_EXPORT Vector3d transformedPoint(const Vector3d& point,
                                                   const Matrix4d& matrix) noexcept;
[[nodiscard]] KIV_EXPORT Vector3d transformedDirection(const Vector3d& direction,
                                                       const Matrix4d& matrix) noexcept;

/// The smallest box around the box after the transform.
[[nodiscard]] KIV_EXPORT BoundingBox3d transformed(const BoundingBox3d& box,
                                                   const Matrix4d& matrix);

} // namespace Kiv_v4::kit
