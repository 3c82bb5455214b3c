#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include "kiv/attributeVariant.h"

namespace Kiv_v4::conformance {

/// Calls `visit` with the attribute as an object of the class of its type. Returns false if it is
/// not such an object or its type has no values.
template <class Visit>
bool visitKind(const Attribute::Ptr& attribute, Visit visit)
{
    return visitAttribute(*attribute, [&](auto& kind, auto) { visit(kind); });
}

/// The numbers of a value, in order; none for texts.
template <class T>
std::vector<double> numbersOf(const T& value)
{
    std::vector<double> numbers;
    if constexpr (std::is_arithmetic_v<T>) {
        numbers.push_back(static_cast<double>(value));
    } else if constexpr (requires { value.vector; }) {
        numbers.assign(value.vector.begin(), value.vector.end());
    } else if constexpr (requires { value.color; }) {
        numbers.assign(value.color.begin(), value.color.end());
    } else if constexpr (requires { value.matrix; }) {
        for (const auto& row : value.matrix) {
            numbers.insert(numbers.end(), row.begin(), row.end());
        }
    }
    return numbers;
}

/// Numbers as text, exact enough to tell any two `float`s apart.
[[nodiscard]] std::string textOf(const std::vector<double>& numbers);

/// The value as exact text, independent of the attribute's own text; empty without a value.
[[nodiscard]] std::string exactValue(const Attribute::Ptr& attribute);

} // namespace Kiv_v4::conformance
