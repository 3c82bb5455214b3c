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

// Whole transforms, with undo, drags and notifications, from what the data have: a matrix, factors,
// or attributes. `get` reads those of the item at a path; none when there is no such item or it has
// no transform, and then the item counts as one in the place of its parent. `set`, which is empty
// when nothing can be edited, writes them; the kit announces the change. Translation, rotation,
// scale and shear can be set; pivots cannot. Numbers that are infinite or NaN are refused, as is a
// matrix that has no factors.

/// The data have a matrix. The other rows stay exact when it is translated; another factor that is
/// set makes them anew. A matrix without factors reads as unrotated, unscaled and unsheared, and
/// can only be translated or replaced.
struct MatrixAccess
{
    /// Reads the matrix; nothing when there is no such item.
    std::function<std::optional<Matrix4d>(const Path& path)> get;
    /// Writes the matrix; throws when it cannot.
    std::function<void(const Path& path, const Matrix4d& matrix)> set;
};

/// The data have factors, of which `composed` makes the matrix.
struct FactorsAccess
{
    /// Reads the factors; nothing when there is no such item.
    std::function<std::optional<AffineFactors>(const Path& path)> get;
    /// Writes the factors; throws when it cannot.
    std::function<void(const Path& path, const AffineFactors& factors)> set;
};

/// The data have attributes of type `Double3` or `Float3` for the factors; an empty name stands for
/// a factor that they do not have, which reads as that of the identity and is refused when it would
/// become another one. Setting one announces the attribute as well as the transform.
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

/// Returns a handler whose transforms read and write so.
[[nodiscard]] KIV_EXPORT Transform3dHandler::Ptr transformHandler(MatrixAccess access);
[[nodiscard]] KIV_EXPORT Transform3dHandler::Ptr transformHandler(FactorsAccess access);
[[nodiscard]] KIV_EXPORT Transform3dHandler::Ptr transformHandler(AttributesAccess access);

} // namespace Kiv_v4::kit
