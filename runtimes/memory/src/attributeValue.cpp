#include "attributeValue.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

#include "kiv/attributeVariant.h"

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

/// The value alone, without what belongs to it.
struct Bare
{
    AttributeVariant operator()(const Enumeration& value) const
    {
        return EnumStringValue{value.text};
    }
    AttributeVariant operator()(const Native&) const { return {}; }

    template <class Value>
    AttributeVariant operator()(const Value& value) const
    {
        return value;
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
    return Kiv_v4::textOf(std::visit(Bare(), value));
}

} // namespace Kiv_v4::memory
