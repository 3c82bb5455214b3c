#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "kiv/attributeVariant.h"

namespace Kiv_v4::memory {

using Filename = FilenameValue;

/// One of the allowed strings; if there are none, there is no value.
struct Enumeration
{
    std::string text;
    std::vector<std::string> allowed;
};

/// A value of a type that the library has no name for; the value itself is not stored.
struct Native
{
    std::string typeName;
};

/// The value of an attribute, one alternative per attribute type.
using AttributeValue =
    std::variant<bool, int, float, double, std::string, TypedColorN<float, 3>,
                 TypedColorN<float, 4>, Filename, Enumeration, TypedVectorN<int, 3>,
                 TypedVectorN<float, 2>, TypedVectorN<float, 3>, TypedVectorN<float, 4>,
                 TypedVectorN<double, 3>, TypedSquareMatrixN<double, 3>,
                 TypedSquareMatrixN<double, 4>, Native>;

/// The type constant of `Attribute` for the value's alternative.
[[nodiscard]] std::string typeOf(const AttributeValue& value);

/// The value of a new attribute of that type: false, zero, empty. `std::nullopt` if the type is not
/// a type constant.
[[nodiscard]] std::optional<AttributeValue> initialValue(const std::string& type);

/// False for a generic attribute and for an enumeration without strings.
[[nodiscard]] bool hasValue(const AttributeValue& value);

/// The value for display, the same in every locale: numbers as the shortest text that reads back,
/// `true` and `false`, vectors and colours as `(1, 2, 3)`, matrices as the vector of their rows.
[[nodiscard]] std::string textOf(const AttributeValue& value);

} // namespace Kiv_v4::memory
