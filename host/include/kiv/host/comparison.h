#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/host/outline.h"
#include "kiv/host/propertyValue.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

// The differences between two trees of items: two files, two states of a scene, or two run-times
// that show the same data.
//
//     for (const auto& difference : host::compare(oldRoot, newRoot)) {
//         report(textOf(difference));
//     }

/// The groups of the values that `compare` looks at beside those of `propertyTable`.
inline constexpr const char* kAttribute = "attribute";
inline constexpr const char* kMaterial = "material";

/// How exact a comparison is.
struct ComparisonOptions
{
    /// Numbers are equal if they differ by no more than this, or by no more than this share of the
    /// larger one. 0 is exact; NaN equals NaN.
    double tolerance = 0;

    /// Whether the values of items are compared, or only the structure.
    bool values = true;

    /// Returns whether a value is compared; null compares all.
    std::function<bool(const std::string& group, const std::string& name)> counts{};

    /// Called a few times for each item.
    OnVisit onVisit{};
};

/// One way in which the tree after differs from the one before.
struct Difference
{
    /// In what an item differs.
    enum class Kind : std::uint8_t {
        Added,     ///< The item is new, with its descendants except those that moved there.
        Removed,   ///< The item is gone, with its descendants except those that moved away.
        Moved,     ///< The item has another parent.
        Renamed,   ///< The item has another name.
        Reordered, ///< The children that stayed are in another order.
        Changed    ///< A value changed, was added or was removed.
    };

    Kind kind;   ///< In what the item differs.
    Path before; ///< Where the item is in the tree before; empty for an added one.
    Path after;  ///< Where it is in the tree after; empty for a removed one.

    // Of a changed value; empty on the side without it.

    std::string group{}; ///< The group of the property, `kAttribute` or `kMaterial`.
    std::string name{};  ///< The name of the property, attribute or material.
    PropertyValue was{}; ///< The value before.
    PropertyValue is{};  ///< The value after.
};

/// Returns the differences between two items and their descendants, across gateways: first in the
/// order of the tree before, then added items in the order of the tree after. The two may be items
/// of different run-times or the same item; their own names are not compared. Neither may be null.
///
/// Items are paired by place: by names and types from the top down. An item without a partner is
/// then paired as renamed with one of the same parent, type and contents; as moved with one of the
/// same name, type and shape, or with the only one of its name and type; and as either if items
/// below both are paired. A renamed item without children whose values changed too is removed and
/// added.
///
/// The factors of transforms are compared, and matrices only if the factors are equal. Materials
/// are compared by the names of those that are bound.
///
/// **Cost:** linear in the items and their values, times the levels of moves inside moves.
[[nodiscard]] KIV_EXPORT std::vector<Difference> compare(const SceneItem::Ptr& before,
                                                         const SceneItem::Ptr& after,
                                                         const ComparisonOptions& options = {});

/// Returns whether two values are equal to the tolerance, as in `ComparisonOptions`.
[[nodiscard]] KIV_EXPORT bool isSame(const PropertyValue& one, const PropertyValue& other,
                                     double tolerance);

/// Returns the word for a kind: `added`, `removed`, `moved`, `renamed`, `reordered`, `changed`.
[[nodiscard]] KIV_EXPORT const char* textOf(Difference::Kind kind) noexcept;

} // namespace Kiv_v4::host
