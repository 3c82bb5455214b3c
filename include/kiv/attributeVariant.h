#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "kiv/attribute.h"
#include "kiv/export.h"

namespace Kiv_v4 {

// Attributes of every type through one value and one visitor:
//
//     const auto size = attributes->attribute("size");
//     std::cout << textOf(value(*size)) << '\n';
//     if (const auto command = setValueCmd(*size, valueFromText(size->type(), "2.5"))) { ... }

/// The value of an `AttributeFilename`, apart from other texts.
struct FilenameValue
{
    /// The name of the file.
    std::string text;

    /// Compare the names.
    bool operator==(const FilenameValue& other) const { return text == other.text; }
    bool operator!=(const FilenameValue& other) const { return !(*this == other); }
};

/// The value of an `AttributeEnumString`, apart from other texts.
struct EnumStringValue
{
    /// The string of the enumeration.
    std::string text;

    /// Compare the strings.
    bool operator==(const EnumStringValue& other) const { return text == other.text; }
    bool operator!=(const EnumStringValue& other) const { return !(*this == other); }
};

/// The value of an attribute: one alternative for each type that has values, and `std::monostate`
/// for no value, as generic attributes always have.
using AttributeVariant =
    std::variant<std::monostate, bool, int, float, double, std::string, FilenameValue,
                 EnumStringValue, TypedColorN<float, 3>, TypedColorN<float, 4>,
                 TypedVectorN<int, 3>, TypedVectorN<float, 2>, TypedVectorN<float, 3>,
                 TypedVectorN<float, 4>, TypedVectorN<double, 3>, TypedSquareMatrixN<double, 3>,
                 TypedSquareMatrixN<double, 4>>;

/// One type of attributes: `Type` is the class, `Get` what its `get()` returns, `Value` the
/// alternative of `AttributeVariant`.
template <class A, class V = std::decay_t<decltype(std::declval<const A&>().get())>>
struct AttributeClass
{
    /// The attribute's class.
    using Type = A;
    /// The type that `get()` returns.
    using Get = std::decay_t<decltype(std::declval<const A&>().get())>;
    /// The alternative of `AttributeVariant`.
    using Value = V;
    const char* name; ///< The type constant of `Attribute`.

    /// Convert the alternative to the argument of `set()`, and back.
    [[nodiscard]] static const Get& unwrapped(const Value& value)
    {
        if constexpr (std::is_same_v<Get, Value>) {
            return value;
        } else {
            return value.text;
        }
    }
    [[nodiscard]] static Value wrapped(Get value) { return Value{std::move(value)}; }
};

/// All types that have values, in the order of the alternatives.
[[nodiscard]] constexpr auto attributeClasses()
{
    return std::tuple{AttributeClass<AttributeBool>{Attribute::kBool},
                      AttributeClass<AttributeInt>{Attribute::kInt},
                      AttributeClass<AttributeFloat>{Attribute::kFloat},
                      AttributeClass<AttributeDouble>{Attribute::kDouble},
                      AttributeClass<AttributeString>{Attribute::kString},
                      AttributeClass<AttributeFilename, FilenameValue>{Attribute::kFilename},
                      AttributeClass<AttributeEnumString, EnumStringValue>{Attribute::kEnumString},
                      AttributeClass<AttributeColorFloat3>{Attribute::kColorFloat3},
                      AttributeClass<AttributeColorFloat4>{Attribute::kColorFloat4},
                      AttributeClass<AttributeInt3>{Attribute::kInt3},
                      AttributeClass<AttributeFloat2>{Attribute::kFloat2},
                      AttributeClass<AttributeFloat3>{Attribute::kFloat3},
                      AttributeClass<AttributeFloat4>{Attribute::kFloat4},
                      AttributeClass<AttributeDouble3>{Attribute::kDouble3},
                      AttributeClass<AttributeMatrix3d>{Attribute::kMatrix3d},
                      AttributeClass<AttributeMatrix4d>{Attribute::kMatrix4d}};
}

/// Calls `visit` with the `AttributeClass` of the type constant `type`. Returns false for a type
/// without values.
template <class Visit>
bool visitAttributeClass(const std::string& type, Visit&& visit)
{
    return std::apply(
        [&](auto... candidates) {
            return ((type == candidates.name && (visit(candidates), true)) || ...);
        },
        attributeClasses());
}

/// Calls `visit(typed, attributeClass)` with `attribute` as an object of the class of its type.
/// Returns false if its type has no values or it is not an object of that class.
template <class Visit>
bool visitAttribute(Attribute& attribute, Visit&& visit)
{
    auto visited = false;
    visitAttributeClass(attribute.type(), [&](auto attributeClass) {
        using Type = typename decltype(attributeClass)::Type;
        if (auto* typed = dynamic_cast<Type*>(&attribute)) {
            visit(*typed, attributeClass);
            visited = true;
        }
    });
    return visited;
}

/// All type constants that an attribute can have, `Attribute::kGeneric` last.
[[nodiscard]] KIV_EXPORT std::vector<std::string> attributeTypes();

/// The type constant of the value's alternative; `Attribute::kGeneric` for no value.
[[nodiscard]] KIV_EXPORT std::string typeOf(const AttributeVariant& value);

/// The value of a new attribute of that type: false, zero, empty; no value for
/// `Attribute::kGeneric`. Returns `std::nullopt` if `type` is not a type constant.
[[nodiscard]] KIV_EXPORT std::optional<AttributeVariant> initialValue(const std::string& type);

/// The present value of `attribute`; no value if `hasValue()` is false or its type has none.
/// Exceptions of the run-time's `get` pass through.
[[nodiscard]] KIV_EXPORT AttributeVariant value(const Attribute& attribute);

/// Returns the command of `setCmd` of the attribute's class, which changes nothing yet; null if the
/// run-time refuses. Throws `std::invalid_argument` if `value` is of another type than the
/// attribute; exceptions of `setCmd` pass through.
[[nodiscard]] KIV_EXPORT UndoableCommand::Ptr setValueCmd(Attribute& attribute,
                                                          const AttributeVariant& value);

/// The value as text, the same in every locale: numbers as the shortest text that reads back as the
/// same number, infinity as `inf`, NaN as `nan`, booleans as `true` and `false`, texts unchanged,
/// vectors and colours as `(1, 2, 3)`, matrices as the vector of their rows. Empty for no value.
[[nodiscard]] KIV_EXPORT std::string textOf(const AttributeVariant& value);

/// The value of that type that `textOf` writes as `text`. Any blanks, commas and parentheses may
/// separate numbers. Throws `std::invalid_argument` if `text` is no such value, with the wrong word
/// or the expected number of elements in the message, and if `type` is not a type constant.
[[nodiscard]] KIV_EXPORT AttributeVariant valueFromText(const std::string& type,
                                                        const std::string& text);

} // namespace Kiv_v4
