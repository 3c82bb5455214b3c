#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "kiv/attribute.h"
#include "kiv/export.h"
#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4::host {

/// A value of a property or an attribute, whatever its type. The types are those of attributes:
/// `Attribute::kFloat` and so on; texts, file names and choices are all strings.
using PropertyValue =
    std::variant<bool, int, float, double, std::string, TypedColorN<float, 3>,
                 TypedColorN<float, 4>, TypedVectorN<int, 3>, TypedVectorN<float, 2>,
                 TypedVectorN<float, 3>, TypedVectorN<float, 4>, TypedVectorN<double, 3>,
                 TypedSquareMatrixN<double, 3>, TypedSquareMatrixN<double, 4>>;

/// Returns the type names that an attribute can be given, `Attribute::kGeneric` last, which has no
/// value to reach.
[[nodiscard]] KIV_EXPORT std::vector<std::string> attributeTypes();

/// Returns the zero, false or empty value of a type; nothing for a name that is no type, and for
/// one without values to reach. With it, a reader of values learns what to read.
[[nodiscard]] KIV_EXPORT std::optional<PropertyValue> emptyValue(const std::string& type);

/// Returns the attribute's value; nothing when it has none or is of a type without values to reach.
[[nodiscard]] KIV_EXPORT std::optional<PropertyValue> attributeValue(const Attribute& attribute);

/// Returns a command that sets the attribute, or null when its run-time refuses. Throws
/// `std::invalid_argument` that names the attribute when `value` is not of its type.
[[nodiscard]] KIV_EXPORT UndoableCommand::Ptr setAttributeCmd(Attribute& attribute,
                                                              const PropertyValue& value);

/// Returns the number with at most six digits, never as a negative zero.
[[nodiscard]] KIV_EXPORT std::string numberText(double number);

/// Returns the value for people, on one line: `yes` or `no`, numbers as `numberText` has them,
/// elements behind commas, matrices row by row.
[[nodiscard]] KIV_EXPORT std::string valueText(const PropertyValue& value);

} // namespace Kiv_v4::host
