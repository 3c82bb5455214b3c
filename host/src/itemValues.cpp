#include "itemValues.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <type_traits>
#include <utility>

#include "kiv/attributes.h"
#include "kiv/host/itemProperties.h"
#include "kiv/material.h"

namespace Kiv_v4::host {

namespace {

bool isSameNumber(double one, double other, double tolerance)
{
    if (one == other || (std::isnan(one) && std::isnan(other))) {
        return true;
    }
    const auto distance = std::abs(one - other);
    return distance <= tolerance ||
           distance <= tolerance * std::max(std::abs(one), std::abs(other));
}

template <class T>
bool isSameTyped(const T& one, const T& other, double tolerance);

template <class Elements>
bool areSame(const Elements& one, const Elements& other, double tolerance)
{
    return std::equal(one.begin(), one.end(), other.begin(),
                      [tolerance](const auto& left, const auto& right) {
                          return isSameTyped(left, right, tolerance);
                      });
}

template <class T>
bool isSameTyped(const T& one, const T& other, double tolerance)
{
    if constexpr (std::is_floating_point_v<T>) {
        return isSameNumber(one, other, tolerance);
    } else if constexpr (requires { one.vector; }) {
        return areSame(one.vector, other.vector, tolerance);
    } else if constexpr (requires { one.color; }) {
        return areSame(one.color, other.color, tolerance);
    } else if constexpr (requires { one.matrix; }) {
        return areSame(one.matrix, other.matrix, tolerance);
    } else if constexpr (requires { one.begin(); } && !std::is_same_v<T, std::string>) {
        return areSame(one, other, tolerance);
    } else {
        return one == other;
    }
}

/// The value of an attribute; its display text when the library has no name for the type.
PropertyValue valueOf(const Attribute& attribute)
{
    auto typed = value(attribute);
    const auto isNative = std::holds_alternative<std::monostate>(typed) && attribute.hasValue();
    return isNative ? PropertyValue(attribute.string()) : std::move(typed);
}

void addAttributes(const SceneItem::Ptr& item, std::vector<ItemValue>& values)
{
    const auto attributes = Attributes::attributes(item);
    for (const auto& name :
         attributes ? attributes->attributeNames() : std::vector<std::string>()) {
        if (const auto attribute = attributes->attribute(name)) {
            values.push_back({kAttribute, name, valueOf(*attribute)});
        }
    }
}

void addMaterials(const SceneItem::Ptr& item, std::vector<ItemValue>& values)
{
    const auto material = Material::material(item);
    std::string names;
    for (const auto& bound : material ? material->materials() : std::vector<SceneItem::Ptr>()) {
        names += (names.empty() ? "" : ", ") + bound->nodeName();
    }
    if (!names.empty()) {
        values.push_back({kMaterial, "materials", names});
    }
}

bool isMatrix(const Difference& difference)
{
    return difference.group == kTransform && difference.name == "matrix";
}

/// The matrix says no more than the factors do, where one of these differs.
void dropMatrix(std::vector<Difference>& differences, std::size_t first)
{
    const auto begin = differences.begin() + static_cast<std::ptrdiff_t>(first);
    const auto isFactor = [](const Difference& difference) {
        return difference.group == kTransform && !isMatrix(difference);
    };
    if (std::any_of(begin, differences.end(), isFactor)) {
        differences.erase(std::remove_if(begin, differences.end(), isMatrix), differences.end());
    }
}

} // namespace

bool isSame(const PropertyValue& one, const PropertyValue& other, double tolerance)
{
    return one.index() == other.index() &&
           std::visit(
               [&]<class T>(const T& typed) {
                   return isSameTyped(typed, std::get<T>(other), tolerance);
               },
               one);
}

std::vector<ItemValue> valuesOf(const SceneItem::Ptr& item, const ComparisonOptions& options)
{
    std::vector<ItemValue> values;
    if (!options.values) {
        return values;
    }
    const ItemProperties properties(item);
    for (const auto& property : propertyTable()) {
        const auto found =
            property.name == "worldMatrix" ? std::nullopt : properties.value(property);
        if (found) {
            values.push_back({property.group, property.name, *found});
        }
    }
    addAttributes(item, values);
    addMaterials(item, values);
    if (options.counts) {
        values.erase(std::remove_if(values.begin(), values.end(),
                                    [&](const ItemValue& value) {
                                        return !options.counts(value.group, value.name);
                                    }),
                     values.end());
    }
    return values;
}

void compareValues(const SceneItem::Ptr& before, const SceneItem::Ptr& after,
                   const ComparisonOptions& options, std::vector<Difference>& differences)
{
    const auto first = differences.size();
    const auto tell = [&](const std::string& group, const std::string& name, PropertyValue was,
                          PropertyValue is) {
        differences.push_back({Difference::Kind::Changed, before->path(), after->path(), group,
                               name, std::move(was), std::move(is)});
    };
    std::map<std::pair<std::string, std::string>, PropertyValue> left;
    for (auto& value : valuesOf(before, options)) {
        left.emplace(std::pair(value.group, value.name), std::move(value.value));
    }
    for (auto& value : valuesOf(after, options)) {
        const auto partner = left.extract({value.group, value.name});
        if (partner.empty()) {
            tell(value.group, value.name, {}, std::move(value.value));
        } else if (!isSame(partner.mapped(), value.value, options.tolerance)) {
            tell(value.group, value.name, std::move(partner.mapped()), std::move(value.value));
        }
    }
    for (auto& [names, was] : left) {
        tell(names.first, names.second, std::move(was), {});
    }
    dropMatrix(differences, first);
}

} // namespace Kiv_v4::host
