#pragma once

#include <optional>
#include <string>

#include "kiv/export.h"
#include "kiv/host/propertyValue.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

/// A condition on the values of items, as users write it: `focalLength>50`, `intensity<=2.5`,
/// `note=*draft*`, `visible!=yes`, or a name alone for whatever has it.
///
///     const host::ItemCondition isLong("focalLength>50");
///     if (isLong.holds(item)) { ... }
///
/// A name is that of an attribute or of a property of `propertyTable`, in any group. With `=` and
/// `!=` numbers are compared as numbers, to six digits, and everything else with a pattern, as
/// `isLike` has it, in the words of `textOf` and of `valueText`. A value that is not there meets no
/// condition.
class KIV_EXPORT ItemCondition
{
public:
    /// Throws `std::invalid_argument` with the reason for a text without a name, and when no number
    /// is to the right of `<`, `<=`, `>` or `>=`.
    explicit ItemCondition(const std::string& text, bool ignoresCase = false);

    /// Returns whether an attribute or property of the item meets it. Exceptions of run-times pass
    /// through.
    [[nodiscard]] bool holds(const SceneItem::Ptr& item) const;

    /// Returns whether an attribute of the item has metadata that meet it, the name being the key.
    [[nodiscard]] bool holdsForMetadata(const SceneItem::Ptr& item) const;

    /// Returns whether the value meets it, whatever its name.
    [[nodiscard]] bool holdsFor(const PropertyValue& value) const;

private:
    [[nodiscard]] bool isEqual(const PropertyValue& value) const;

    std::string _name;
    std::string _operator; ///< Empty for a name alone.
    std::string _text;
    std::optional<double> _number; ///< What `_text` reads as.
    bool _ignoresCase;
};

} // namespace Kiv_v4::host
