#pragma once

#include <optional>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/transform3dRead.h"

namespace Kiv_v4::host {

// Matrices are for row vectors, with the translation in the last row. The factors of an item's own
// matrix are the rows of `kTransform` in `itemProperties.h`.

/// Returns the matrix whose product with `matrix`, in either order, is the identity to rounding;
/// nothing when the matrix is singular to rounding or holds NaN or infinity.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> inverse(const Matrix4d& matrix);

/// Returns the lowest gateway above `path` without a transform, which leaves what is below it
/// without a place in the world; the empty path when there is none.
[[nodiscard]] KIV_EXPORT Path gatewayWithoutTransform(Path path);

/// Returns the matrix from the item's space to that of the world, across every gateway above it;
/// nothing when the item or a gateway above it has no transform. The item must not be null.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> worldMatrix(const SceneItem::Ptr& item);

/// Returns the matrix that the item needs of its own for `world` to be its world matrix; nothing
/// when it has no world matrix, or when that of its parent is singular. The item must not be null.
[[nodiscard]] KIV_EXPORT std::optional<Matrix4d> ownMatrix(const SceneItem::Ptr& item,
                                                           const Matrix4d& world);

} // namespace Kiv_v4::host
