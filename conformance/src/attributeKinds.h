#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/attribute.h"

namespace Kiv_v4::conformance {

namespace detail {

template <class Kind, class Visit>
bool visitAs(const Attribute::Ptr& attribute, Visit& visit)
{
    const auto kind = std::dynamic_pointer_cast<Kind>(attribute);
    if (kind) {
        visit(*kind);
    }
    return kind != nullptr;
}

} // namespace detail

/// Calls `visit` with the attribute as the class of its kind; false when it is none that has a
/// value.
template <class Visit>
bool visitKind(const Attribute::Ptr& attribute, Visit visit)
{
    using namespace detail;
    return visitAs<AttributeBool>(attribute, visit) || visitAs<AttributeInt>(attribute, visit) ||
           visitAs<AttributeFloat>(attribute, visit) ||
           visitAs<AttributeDouble>(attribute, visit) ||
           visitAs<AttributeString>(attribute, visit) ||
           visitAs<AttributeColorFloat3>(attribute, visit) ||
           visitAs<AttributeColorFloat4>(attribute, visit) ||
           visitAs<AttributeFilename>(attribute, visit) ||
           visitAs<AttributeEnumString>(attribute, visit) ||
           visitAs<AttributeInt3>(attribute, visit) || visitAs<AttributeFloat2>(attribute, visit) ||
           visitAs<AttributeFloat3>(attribute, visit) ||
           visitAs<AttributeFloat4>(attribute, visit) ||
           visitAs<AttributeDouble3>(attribute, visit) ||
           visitAs<AttributeMatrix3d>(attribute, visit) ||
           visitAs<AttributeMatrix4d>(attribute, visit);
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

/// The value as text, exact, whatever the attribute's own text is; empty without a value.
[[nodiscard]] std::string exactValue(const Attribute::Ptr& attribute);

} // namespace Kiv_v4::conformance
