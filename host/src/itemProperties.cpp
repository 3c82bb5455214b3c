#include "kiv/host/itemProperties.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "itemInterfaces.h"

namespace Kiv_v4::host {

namespace {

/// The table and, for each of its rows, the access to the property.
struct Table
{
    Table() : rows(makeRows())
    {
        for (const auto& row : rows) {
            properties.push_back(row.property);
            valueIndices.push_back(initialValue(row.property.type)->index());
        }
    }

    [[nodiscard]] std::size_t indexOf(const Property& property) const
    {
        return static_cast<std::size_t>(&property - properties.data());
    }
    [[nodiscard]] const Row& rowOf(const Property& property) const
    {
        return rows[indexOf(property)];
    }
    [[nodiscard]] std::size_t valueIndexOf(const Property& property) const
    {
        return valueIndices[indexOf(property)];
    }

    const std::vector<Row> rows;
    std::vector<Property> properties;
    std::vector<std::size_t> valueIndices; ///< Of the types of values.
};

const Table& table()
{
    static const Table all;
    return all;
}

void requireChoice(const Property& property, const std::string& choice)
{
    if (std::ranges::find(property.choices, choice) == property.choices.end()) {
        std::string choices;
        for (const auto& known : property.choices) {
            choices += (choices.empty() ? "" : ", ") + known;
        }
        throw std::invalid_argument("expected one of " + choices + ": '" + choice + "'");
    }
}

} // namespace

const std::vector<Property>& propertyTable()
{
    return table().properties;
}

const Property* findProperty(const std::string& group, const std::string& name)
{
    const auto& all = propertyTable();
    const auto found = std::ranges::find_if(all, [&](const Property& property) {
        return property.group == group && property.name == name;
    });
    return found == all.end() ? nullptr : &*found;
}

ItemProperties::ItemProperties(const SceneItem::Ptr& item)
    : _interfaces(std::make_unique<Interfaces>(item))
{
    if (!item) {
        throw std::invalid_argument("The item is null.");
    }
}

ItemProperties::~ItemProperties() = default;

std::vector<const Property*> ItemProperties::of(const std::string& group) const
{
    std::vector<const Property*> found;
    for (const auto& property : propertyTable()) {
        if (property.group == group && value(property)) {
            found.push_back(&property);
        }
    }
    return found;
}

std::optional<PropertyValue> ItemProperties::value(const Property& property) const
{
    return table().rowOf(property).read(*_interfaces);
}

UndoableCommand::Ptr ItemProperties::setCmd(const Property& property,
                                            const PropertyValue& value) const
{
    const auto& row = table().rowOf(property);
    if (!row.makeCmd) {
        throw std::invalid_argument("property '" + property.name + "' cannot be set");
    }
    if (table().valueIndexOf(property) != value.index()) {
        throw std::invalid_argument("property '" + property.name + "' is of type " + property.type);
    }
    if (const auto* choice = std::get_if<EnumStringValue>(&value)) {
        requireChoice(property, choice->text);
    }
    if (!row.canSet(*_interfaces)) {
        throw std::invalid_argument("the item has no property '" + property.name + "'");
    }
    return row.makeCmd(*_interfaces, value);
}

} // namespace Kiv_v4::host
