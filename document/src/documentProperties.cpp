#include "documentProperties.h"

#include <cstring>
#include <map>
#include <type_traits>

namespace Kiv_v4::document {

namespace {

/// The value of a new item in memory.
host::PropertyValue initialOf(const host::Property& property)
{
    return property.name == "scale" ? TypedVectorN<double, 3>({1, 1, 1})
                                    : *initialValue(property.type);
}

PropertyList storedOf(const std::string& group)
{
    PropertyList stored;
    for (const auto& property : host::propertyTable()) {
        if (property.group != group || !property.isSettable || property.name == "matrix") {
            continue;
        }
        stored.push_back({&property});
        if (group == host::kTransform) {
            stored.back().initial = initialOf(property);
        }
    }
    return stored;
}

template <class T>
bool sameBitsOf(const T& left, const T& right)
{
    constexpr auto isText = std::is_same_v<T, std::string> || std::is_same_v<T, FilenameValue> ||
                            std::is_same_v<T, EnumStringValue>;
    if constexpr (isText || std::is_same_v<T, std::monostate>) {
        return left == right;
    } else {
        return std::memcmp(&left, &right, sizeof left) == 0;
    }
}

} // namespace

const PropertyList& propertiesOf(const std::string& group)
{
    static const std::map<std::string, PropertyList> all = [] {
        std::map<std::string, PropertyList> lists;
        for (const auto* each : {host::kTransform, host::kCamera, host::kLight, host::kGraphNode}) {
            lists.emplace(each, storedOf(each));
        }
        return lists;
    }();
    return all.at(group);
}

const PropertyList& fileTransformProperties()
{
    static const PropertyList all = [] {
        PropertyList list;
        for (const auto* name : {"matrix", "translation", "rotation", "scale", "shear"}) {
            list.push_back({host::findProperty(host::kTransform, name)});
        }
        return list;
    }();
    return all;
}

const host::Property& visibleProperty()
{
    static const auto* const property = host::findProperty(host::kObject, "visible");
    return *property;
}

bool sameBits(const host::PropertyValue& left, const host::PropertyValue& right)
{
    return left.index() == right.index() &&
           std::visit(
               [&right]<class T>(const T& typed) { return sameBitsOf(typed, std::get<T>(right)); },
               left);
}

} // namespace Kiv_v4::document
