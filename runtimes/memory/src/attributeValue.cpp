#include "attributeValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <utility>

#include "kiv/attribute.h"

namespace Kiv_v4::memory {

namespace {

/// In the order of the alternatives.
constexpr const char* kTypes[] = {
    Attribute::kBool,       Attribute::kInt,         Attribute::kFloat,       Attribute::kDouble,
    Attribute::kString,     Attribute::kColorFloat3, Attribute::kColorFloat4, Attribute::kFilename,
    Attribute::kEnumString, Attribute::kInt3,        Attribute::kFloat2,      Attribute::kFloat3,
    Attribute::kFloat4,     Attribute::kDouble3,     Attribute::kMatrix3d,    Attribute::kMatrix4d,
    Attribute::kGeneric};

constexpr auto kNbTypes = std::variant_size_v<AttributeValue>;
static_assert(std::size(kTypes) == kNbTypes);

template <std::size_t... Index>
std::array<AttributeValue, kNbTypes> initialValues(std::index_sequence<Index...>)
{
    return {AttributeValue(std::in_place_index<Index>)...};
}

/// Writes a value as text, whatever its alternative.
struct Text
{
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(int value) const { return number(value); }
    std::string operator()(float value) const { return number(value); }
    std::string operator()(double value) const { return number(value); }
    std::string operator()(const std::string& value) const { return value; }
    std::string operator()(const Filename& value) const { return value.text; }
    std::string operator()(const Enumeration& value) const { return value.text; }
    std::string operator()(const Native&) const { return {}; }

    template <class T, std::size_t N>
    std::string operator()(const TypedColorN<T, N>& value) const
    {
        return (*this)(value.color);
    }

    template <class T, std::size_t N>
    std::string operator()(const TypedVectorN<T, N>& value) const
    {
        return (*this)(value.vector);
    }

    template <class T, std::size_t N>
    std::string operator()(const TypedSquareMatrixN<T, N>& value) const
    {
        return (*this)(value.matrix);
    }

    template <class Element, std::size_t N>
    std::string operator()(const std::array<Element, N>& elements) const
    {
        std::string text;
        for (const auto& element : elements) {
            text += (text.empty() ? "(" : ", ") + (*this)(element);
        }
        return text + ")";
    }

private:
    template <class Number>
    static std::string number(Number value)
    {
        char text[32]; // the longest, of a double, has 24
        return {text, std::to_chars(std::begin(text), std::end(text), value).ptr};
    }
};

} // namespace

std::string typeOf(const AttributeValue& value)
{
    return kTypes[value.index()];
}

std::optional<AttributeValue> initialValue(const std::string& type)
{
    static const auto values = initialValues(std::make_index_sequence<kNbTypes>());
    const auto found = std::find(std::begin(kTypes), std::end(kTypes), type);
    if (found == std::end(kTypes)) {
        return std::nullopt;
    }
    return values[static_cast<std::size_t>(found - std::begin(kTypes))];
}

bool hasValue(const AttributeValue& value)
{
    const auto* enumeration = std::get_if<Enumeration>(&value);
    return !std::holds_alternative<Native>(value) && !(enumeration && enumeration->allowed.empty());
}

std::string textOf(const AttributeValue& value)
{
    return std::visit(Text(), value);
}

} // namespace Kiv_v4::memory
