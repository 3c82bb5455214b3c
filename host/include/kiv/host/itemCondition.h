#pragma once

#include <optional>
#include <string>

#include "kiv/export.h"
#include "kiv/host/propertyValue.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

/// A condition on the values of items, as users write it: `focalLength>50`, `intensity<=2.5`,
/// `note=*draft*`, `visible!=yes`, or a name alone, which holds for every item with such a value.
///
///     const host::ItemCondition isLong("focalLength>50");
///     if (isLong.holds(item)) { ... }
///
/// A name is that of an attribute or of a property of `propertyTable`, in any group. With `=` and
/// `!=` numbers are compared as numbers, to six digits, and all other values as texts with a
/// pattern (see `isLike`), as `textOf` or `valueText` writes them. No condition holds for a missing
/// value.
class KIV_EXPORT ItemCondition
{
public:
    /// Throws `std::invalid_argument` with the reason if the text has no name, or no number to the
    /// right of `<`, `<=`, `>` or `>=`.
    explicit ItemCondition(const std::string& text, bool ignoresCase = false);

    /// Returns the name of the values that it is about.
    [[nodiscard]] const std::string& name() const noexcept { return _name; }

    /// Returns whether it holds for an attribute or property of the item. Exceptions of run-times
    /// pass through.
    [[nodiscard]] bool holds(const SceneItem::Ptr& item) const;

    /// Returns whether it holds for metadata of an attribute of the item, by the name as the key.
    [[nodiscard]] bool holdsForMetadata(const SceneItem::Ptr& item) const;

    /// Returns whether it holds for the value, whatever the name.
    [[nodiscard]] bool holdsFor(const PropertyValue& value) const;

private:
    [[nodiscard]] bool isEqual(const PropertyValue& value) const;

    std::string _name;
    std::string _operator; ///< Empty for a name alone.
    std::string _text;
    std::optional<double> _number; ///< The number in `_text`.
    bool _ignoresCase;
};

} // namespace Kiv_v4::host
