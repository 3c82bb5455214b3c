#include "itemRows.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "kiv/attributes.h"
#include "kiv/host/itemProperties.h"
#include "kiv/pathString.h"

#include "attempt.h"

namespace Kiv_v4::qt::detail {

namespace {

using Row = AttributeModel::Row;

/// The groups of properties and their titles, after those of attributes.
constexpr std::array<std::pair<const char*, const char*>, 6> kTitles{
    {{"", QT_TRANSLATE_NOOP("kiv", "Attributes")},
     {host::kTransform, QT_TRANSLATE_NOOP("kiv", "Transform")},
     {host::kObject, QT_TRANSLATE_NOOP("kiv", "Object")},
     {host::kCamera, QT_TRANSLATE_NOOP("kiv", "Camera")},
     {host::kLight, QT_TRANSLATE_NOOP("kiv", "Light")},
     {host::kGraphNode, QT_TRANSLATE_NOOP("kiv", "Node editor")}}};

/// What an attribute's definition adds.
void describe(Row& row, const Attributes& attributes)
{
    const auto* described = dynamic_cast<const Attributes_v4_2*>(&attributes);
    const auto definition = described ? described->attributeDef(row.name) : nullptr;
    if (!definition) {
        return;
    }
    try {
        row.standard = valueFromText(row.type, definition->defaultValue());
    } catch (const std::invalid_argument&) { // a text for people alone: nothing to go back to
    }
}

Row rowOf(const Attribute& attribute, const Attributes& attributes)
{
    Row row{attribute.name(), attribute.displayName(), attribute.type()};
    row.value = value(attribute);
    if (const auto* enumeration = dynamic_cast<const AttributeEnumString*>(&attribute)) {
        row.choices = enumeration->enumValues();
    }
    row.isSettable =
        row.type != Attribute::kGeneric && !(attribute.hasMetadata(Attribute::kLocked) &&
                                             attribute.metadata(Attribute::kLocked).get<bool>());
    describe(row, attributes);
    return row;
}

std::vector<Row> attributeRows(const SceneItem::Ptr& item)
{
    std::vector<Row> rows;
    const auto attributes = Attributes::attributes(item);
    for (const auto& name :
         attributes ? attributes->attributeNames() : std::vector<std::string>()) {
        attempt("read attribute '" + name + "'", [&] {
            if (const auto attribute = attributes->attribute(name)) {
                rows.push_back(rowOf(*attribute, *attributes));
            }
        });
    }
    return rows;
}

std::vector<Row> propertyRows(const host::ItemProperties& item, const std::string& group)
{
    std::vector<Row> rows;
    for (const auto& property : host::propertyTable()) {
        attempt("read " + property.label, [&] {
            auto value = property.group == group ? item.value(property) : std::nullopt;
            if (value) {
                rows.push_back({property.name, property.label, property.type, property.unit,
                                property.choices, std::move(*value), std::nullopt,
                                property.isSettable});
            }
        });
    }
    return rows;
}

/// The values of one item, by groups and names.
class Values
{
public:
    explicit Values(const SceneItem::Ptr& item)
        : _attributes(Attributes::attributes(item)), _properties(item)
    {}

    /// The value of the item's row; nothing when it has no such row.
    [[nodiscard]] std::optional<host::PropertyValue> of(const std::string& group, const Row& row)
    {
        return attempt("read " + row.label, std::optional<host::PropertyValue>(),
                       [&]() -> std::optional<host::PropertyValue> {
                           if (!group.empty()) {
                               return _properties.value(*host::findProperty(group, row.name));
                           }
                           const auto found =
                               _attributes ? _attributes->attribute(row.name) : nullptr;
                           return found && found->type() == row.type ? std::optional(value(*found))
                                                                     : std::nullopt;
                       });
    }

private:
    const Attributes::Ptr _attributes;
    const host::ItemProperties _properties;
};

} // namespace

AttributeGroups groupsOf(const SceneItem::Ptr& item)
{
    AttributeGroups groups;
    const host::ItemProperties properties(item);
    for (const auto& [key, title] : kTitles) {
        const std::string group(key);
        auto rows = group.empty() ? attributeRows(item) : propertyRows(properties, group);
        if (!rows.empty()) {
            groups.push_back({group, std::move(rows)});
        }
    }
    return groups;
}

void keepShared(AttributeGroups& groups, const SceneItem::Ptr& item)
{
    Values values(item);
    for (auto& group : groups) {
        std::erase_if(group.rows, [&](Row& row) {
            const auto value = values.of(group.key, row);
            row.isMixed = row.isMixed || (value && *value != row.value);
            return !value;
        });
    }
    std::erase_if(groups, [](const auto& group) { return group.rows.empty(); });
}

UndoableCommand::Ptr setRowCmd(const SceneItem::Ptr& item, const std::string& group,
                               const std::string& name, const host::PropertyValue& value)
{
    if (!group.empty()) {
        return host::ItemProperties(item).setCmd(*host::findProperty(group, name), value);
    }
    const auto attributes = Attributes::attributes(item);
    const auto attribute = attributes ? attributes->attribute(name) : nullptr;
    if (!attribute) {
        throw std::runtime_error("'" + PathString::string(item->path()) + "' has none any more");
    }
    return setValueCmd(*attribute, value);
}

QString titleOf(const std::string& group)
{
    const auto found = std::ranges::find(
        kTitles, group, [](const auto& title) { return std::string(title.first); });
    return QCoreApplication::translate("kiv", found->second);
}

} // namespace Kiv_v4::qt::detail
