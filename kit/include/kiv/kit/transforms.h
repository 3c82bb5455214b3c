#pragma once

#include <functional>
#include <optional>
#include <string>

#include "kiv/export.h"
#include "kiv/kit/affine.h"
#include "kiv/kit/attributeTable.h"
#include "kiv/path.h"
#include "kiv/transform3dHandler.h"

namespace Kiv_v4::kit {

// Complete transforms, with undo, drags and notifications, from the data's matrix, factors, or
// attributes. `get` reads those of the item at a path; `std::nullopt` if there is no such item or
// it has no transform, and then the item counts as one in the place of its parent. `set` writes
// them; leave it empty if nothing can be edited. The kit announces the change. Translation,
// rotation, scale and shear can be set; pivots cannot. NaN, infinity and matrices without factors
// are refused.

/// For data with a matrix. The other rows stay exact when it is translated; setting another factor
/// recomputes them. A matrix without factors reads as unrotated, unscaled and unsheared, and can
/// only be translated or replaced.
struct MatrixAccess
{
    /// Returns the matrix; `std::nullopt` if there is no such item or it has no transform.
    std::function<std::optional<Matrix4d>(const Path& path)> get;
    /// Writes the matrix; must throw if it cannot.
    std::function<void(const Path& path, const Matrix4d& matrix)> set;
};

/// For data with factors, of which `composed` makes the matrix.
struct FactorsAccess
{
    /// Returns the factors; `std::nullopt` if there is no such item or it has no transform.
    std::function<std::optional<AffineFactors>(const Path& path)> get;
    /// Writes the factors; must throw if it cannot.
    std::function<void(const Path& path, const AffineFactors& factors)> set;
};

/// For data with attributes of type `Double3` or `Float3` for the factors; an empty name stands for
/// a missing factor, which reads as that of the identity and cannot be set to another value.
/// Setting one announces the attribute as well as the transform.
struct AttributesAccess
{
    /// The table with the attributes.
    AttributeTable::Ptr table;
    /// The attribute of the translation, in scene units.
    std::string translation = "translation";
    std::string rotation = "rotation"; ///< In degrees about x, then y, then z.
    /// The attribute of the scale.
    std::string scale = "scale";
    /// The attribute of the shear, xy, xz and yz.
    std::string shear = {};
};

/// Return a handler whose transforms use `access`.
[[nodiscard]] KIV_EXPORT Transform3dHandler::Ptr transformHandler(MatrixAccess access);
[[nodiscard]] KIV_EXPORT Transform3dHandler::Ptr transformHandler(FactorsAccess access);
[[nodiscard]] KIV_EXPORT Transform3dHandler::Ptr transformHandler(AttributesAccess access);

} // namespace Kiv_v4::kit
