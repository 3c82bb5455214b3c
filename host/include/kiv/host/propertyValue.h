#pragma once

#include <string>

#include "kiv/attributeVariant.h"
#include "kiv/export.h"

namespace Kiv_v4::host {

/// A value of a property, of the types that attributes have; `std::monostate` for none.
using PropertyValue = AttributeVariant;

/// Returns the number with at most six digits, never as a negative zero.
[[nodiscard]] KIV_EXPORT std::string numberText(double number);

/// Returns the value for people, on one line: `yes` or `no`, numbers as by `numberText`, elements
/// separated by commas, matrices row by row, `none` for no value. (The text of `textOf` reads back
/// as the same value.)
[[nodiscard]] KIV_EXPORT std::string valueText(const PropertyValue& value);

} // namespace Kiv_v4::host
