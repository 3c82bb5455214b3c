#include "kiv/host/itemCondition.h"

#include <algorithm>
#include <stdexcept>
#include <type_traits>

#include "kiv/attributes.h"
#include "kiv/host/comparison.h"
#include "kiv/host/itemPattern.h"
#include "kiv/host/itemProperties.h"

namespace Kiv_v4::host {

namespace {

constexpr double kSixDigits = 1e-6;

std::optional<double> numberIn(const std::string& text)
{
    try {
        return std::get<double>(valueFromText(Attribute::kDouble, text));
    } catch (const std::invalid_argument&) {
        return {};
    }
}

/// The value if it is one number.
std::optional<double> numberOf(const PropertyValue& value)
{
    return std::visit(
        []<class T>(const T& typed) -> std::optional<double> {
            if constexpr (std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) {
                return static_cast<double>(typed);
            } else {
                return {};
            }
        },
        value);
}

PropertyValue valueOf(const Value& metadata)
{
    return metadata.isType<bool>()          ? PropertyValue(metadata.get<bool>())
           : metadata.isType<int>()         ? PropertyValue(metadata.get<int>())
           : metadata.isType<float>()       ? PropertyValue(metadata.get<float>())
           : metadata.isType<double>()      ? PropertyValue(metadata.get<double>())
           : metadata.isType<std::string>() ? PropertyValue(metadata.get<std::string>())
                                            : PropertyValue();
}

} // namespace

ItemCondition::ItemCondition(const std::string& text, bool ignoresCase) : _ignoresCase(ignoresCase)
{
    const auto begin = std::min(text.find_first_of("<>=!"), text.size());
    auto end = std::min(begin + 1, text.size());
    end += end < text.size() && text[end] == '=' && text[begin] != '=' ? 1 : 0;
    _name = text.substr(0, begin);
    _operator = text.substr(begin, end - begin);
    _text = text.substr(end);
    _number = numberIn(_text);
    if (_name.empty() || _operator == "!") {
        throw std::invalid_argument("not a condition: '" + text +
                                    "'; one is NAME, or NAME, one of = != < <= > >= and a value");
    }
    if (!_number && (_operator.starts_with('<') || _operator.starts_with('>'))) {
        throw std::invalid_argument("not a number: '" + _text + "'");
    }
}

bool ItemCondition::holds(const SceneItem::Ptr& item) const
{
    const auto attributes = Attributes::attributes(item);
    const auto attribute =
        attributes && attributes->hasAttribute(_name) ? attributes->attribute(_name) : nullptr;
    if (attribute && holdsFor(value(*attribute))) {
        return true;
    }
    const ItemProperties properties(item);
    return std::ranges::any_of(propertyTable(), [&](const Property& property) {
        const auto found = property.name == _name ? properties.value(property) : std::nullopt;
        return found && holdsFor(*found);
    });
}

bool ItemCondition::holdsForMetadata(const SceneItem::Ptr& item) const
{
    const auto attributes = Attributes::attributes(item);
    const auto names = attributes ? attributes->attributeNames() : std::vector<std::string>();
    return std::ranges::any_of(names, [&](const std::string& name) {
        const auto attribute = attributes->attribute(name);
        return attribute && attribute->hasMetadata(_name) &&
               holdsFor(valueOf(attribute->metadata(_name)));
    });
}

bool ItemCondition::holdsFor(const PropertyValue& value) const
{
    if (_operator.empty()) {
        return true;
    }
    if (_operator == "=" || _operator == "!=") {
        return isEqual(value) == (_operator == "=");
    }
    const auto number = numberOf(value);
    return number && (_operator == "<"    ? *number < *_number
                      : _operator == "<=" ? *number <= *_number
                      : _operator == ">"  ? *number > *_number
                                          : *number >= *_number);
}

bool ItemCondition::isEqual(const PropertyValue& value) const
{
    const auto number = numberOf(value);
    return number && _number ? isSame(*number, *_number, kSixDigits)
                             : isLike(textOf(value), _text, _ignoresCase) ||
                                   isLike(valueText(value), _text, _ignoresCase);
}

} // namespace Kiv_v4::host
