#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/host/propertyValue.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

// What makes one tree of items another: two files, two states of a scene, two run-times that show
// the same.
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
    /// Numbers are the same when they differ by no more than this, or by no more than this share of
    /// the larger one. 0 is exact; NaN is the same as NaN.
    double tolerance = 0;

    /// Whether the values of items are compared, and not the structure alone.
    bool values = true;

    /// Whether a value counts; null for all.
    std::function<bool(const std::string& group, const std::string& name)> counts{};
};

/// One way in which the tree after differs from the one before.
struct Difference
{
    /// In what an item differs.
    enum class Kind : std::uint8_t {
        Added,     ///< The item, with what is below it but for items moved there.
        Removed,   ///< The item, with what was below it but for items moved away.
        Moved,     ///< The parent is another.
        Renamed,   ///< The name is another.
        Reordered, ///< The children that stayed stand in another order.
        Changed    ///< A value is another, came or went.
    };

    Kind kind;   ///< In what the item differs.
    Path before; ///< Where the item is in the tree before; empty for an added one.
    Path after;  ///< Where it is in the tree after; empty for a removed one.

    // Of a changed value; no value on the side that does not have it.

    std::string group{}; ///< Of the value, as properties have it, `kAttribute` or `kMaterial`.
    std::string name{};  ///< Of the value.
    PropertyValue was{}; ///< The value before.
    PropertyValue is{};  ///< The value after.
};

/// Returns the differences of the trees at and under two items, across gateways, in the order of
/// the tree before and then, for what is added, that of the tree after. The two may be items of
/// different run-times or the same item; their own names do not count. Neither may be null.
///
/// Items are the same when their places are, by names and types from the top down. What has no
/// partner then is paired as renamed when it has the same parent, type and contents as another, as
/// moved when it has the name, type and shape of another or is the only one of a name and type, and
/// as either when items below both are the same. A renamed item without children whose values
/// changed, too, is told as removed and added.
///
/// Of transforms, the factors are compared, and the matrices where these do not differ. Materials
/// are compared by the names of those that are bound.
///
/// **Cost:** linear in the items and their values, times the levels of moves inside moves.
[[nodiscard]] KIV_EXPORT std::vector<Difference> compare(const SceneItem::Ptr& before,
                                                         const SceneItem::Ptr& after,
                                                         const ComparisonOptions& options = {});

/// Returns whether two values are the same to the tolerance, as `ComparisonOptions` has it.
[[nodiscard]] KIV_EXPORT bool isSame(const PropertyValue& one, const PropertyValue& other,
                                     double tolerance);

/// Returns the word for a kind: `added`, `removed`, `moved`, `renamed`, `reordered`, `changed`.
[[nodiscard]] KIV_EXPORT const char* textOf(Difference::Kind kind) noexcept;

} // namespace Kiv_v4::host
