#pragma once

#include <string>

#include "kiv/attributeVariant.h"
#include "kiv/export.h"

namespace Kiv_v4::kit {

/// The value as JSON text from which `valueFromJson` gives the same value: a boolean, a number,
/// a text, an array of numbers, for matrices one of arrays, `null` for no value. Infinities and
/// NaN are the texts `"inf"`, `"-inf"` and `"nan"`; a text that is not UTF-8 is
/// `{"bytes": "..."}` with its bytes as hexadecimal digits.
[[nodiscard]] KIV_EXPORT std::string jsonOf(const AttributeVariant& value);

/// The value of that type that the JSON text says. Throws `std::invalid_argument` for what is no
/// JSON or no such value, with the reason, and for what is no type constant.
[[nodiscard]] KIV_EXPORT AttributeVariant valueFromJson(const std::string& type,
                                                        const std::string& json);

} // namespace Kiv_v4::kit
