#pragma once

#include <optional>

#include "kiv/export.h"
#include "kiv/object3d.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/transform3dRead.h"

namespace Kiv_v4::host {

// Matrices are for row vectors, with the translation in the last row. The factors of an item's own
// matrix are the rows of `kTransform` in `itemProperties.h`.

/// Returns the matrix whose product with `matrix`, in either order, is the identity to rounding;
/// `std::nullopt` if the matrix is singular to rounding or contains NaN or infinity.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> inverse(const Matrix4d& matrix);

/// Returns the lowest gateway above `path` without a transform, below which items have no position
/// in the world; the empty path if there is none.
[[nodiscard]] KIV_EXPORT Path gatewayWithoutTransform(Path path);

/// Returns the matrix from the item's space to that of the world, across every gateway above it;
/// `std::nullopt` if the item or a gateway above it has no transform. The item must not be null.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> worldMatrix(const SceneItem::Ptr& item);

/// Returns the own matrix with which the item's world matrix is `world`; `std::nullopt` if the item
/// has no world matrix or that of its parent is singular. The item must not be null.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> ownMatrix(const SceneItem::Ptr& item,
                                                           const Matrix4d& world);

/// Returns the box around the item and its descendants in its run-time, in world space;
/// `std::nullopt` if the item has no box or no world matrix. It is the box around the transformed
/// corners of `Object3d::boundingBox`, so for a rotated item it may be larger than necessary. The
/// item must not be null.
[[nodiscard]] KIV_EXPORT std::optional<BoundingBox3d> worldBox(const SceneItem::Ptr& item);

} // namespace Kiv_v4::host
