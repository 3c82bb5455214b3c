#pragma once

#include <string>

#include "kiv/attributeVariant.h"
#include "kiv/export.h"

namespace Kiv_v4::kit {

/// Returns the value as JSON text from which `valueFromJson` restores it: a boolean, a number, a
/// text, an array of numbers, for matrices an array of arrays, `null` for no value. Infinity and
/// NaN are the texts `"inf"`, `"-inf"` and `"nan"`; a text that is not UTF-8 is `{"bytes": "..."}`
/// with its bytes as hexadecimal digits.
[[nodiscard]] KIV_EXPORT std::string jsonOf(const AttributeVariant& value);

/// Returns the value of that type in the JSON text. Throws `std::invalid_argument` with the reason
/// if `json` is not JSON or not such a value, and if `type` is not a type constant.
[[nodiscard]] KIV_EXPORT AttributeVariant valueFromJson(const std::string& type,
                                                        const std::string& json);

/// The same for the type that the JSON text itself tells: `Bool`, `Double` for a number, `String`;
/// no value for anything else. Throws `std::invalid_argument` if `json` is not JSON.
[[nodiscard]] KIV_EXPORT AttributeVariant valueFromJson(const std::string& json);

} // namespace Kiv_v4::kit
