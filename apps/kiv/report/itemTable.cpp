#include <algorithm>
#include <set>
#include <stdexcept>

#include "kiv/attributeVariant.h"
#include "kiv/attributes.h"
#include "kiv/host/itemLookup.h"
#include "kiv/mathTypes.h"
#include "kiv/pathString.h"

#include "report/itemReport.h"
#include "report/table.h"
#include "terminal/jsonText.h"
#include "terminal/progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// What an item has under that name; an attribute rather than a property.
std::optional<host::PropertyValue> valueNamed(const SceneItem::Ptr& item, const std::string& name)
{
    const auto attributes = Attributes::attributes(item);
    if (attributes && attributes->hasAttribute(name)) {
        return value(*attributes->attribute(name));
    }
    const host::ItemProperties properties(item);
    for (const auto& property : host::propertyTable()) {
        const auto found = property.name == name ? properties.value(property) : std::nullopt;
        if (found) {
            return found;
        }
    }
    return {};
}

/// All names that `valueNamed` knows of one of the items.
std::vector<std::string> namesOf(const std::vector<SceneItem::Ptr>& items)
{
    std::set<std::string> names;
    for (const auto& property : host::propertyTable()) {
        names.insert(property.name);
    }
    for (const auto& item : items) {
        const auto attributes = Attributes::attributes(item);
        for (const auto& name :
             attributes ? attributes->attributeNames() : std::vector<std::string>()) {
            names.insert(name);
        }
    }
    return {names.begin(), names.end()};
}

std::vector<std::string> namesIn(const std::string& list, const std::vector<SceneItem::Ptr>& items)
{
    const auto known = namesOf(items);
    std::vector<std::string> names;
    for (std::string_view rest = list; !rest.empty();) {
        const std::string name(rest.substr(0, rest.find(',')));
        if (!std::ranges::binary_search(known, name)) {
            throw std::runtime_error("unknown property '" + name + "'" +
                                     host::suggestion(name, known));
        }
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        names.push_back(name);
    }
    return names;
}

/// Matrices take too much room, and factors that are as at first for all say nothing.
std::vector<std::string> usualNames(const std::vector<SceneItem::Ptr>& items)
{
    std::vector<std::string> names;
    for (const auto& property : host::propertyTable()) {
        const auto says = [&](const SceneItem::Ptr& item) {
            const auto found = host::ItemProperties(item).value(property);
            return found && *found != host::PropertyValue(Vector3d());
        };
        if (property.type != Attribute::kMatrix4d && std::ranges::any_of(items, says)) {
            names.push_back(property.name);
        }
    }
    return names;
}

} // namespace

void showTable(const std::vector<SceneItem::Ptr>& items, const std::string& columns, bool asJson,
               Output& output)
{
    const auto names = columns.empty() ? usualNames(items) : namesIn(columns, items);
    std::vector<Table::Column> titles{{"item"}, {"node type", false, &Paint::nodeType}};
    for (const auto& name : names) {
        titles.push_back({name});
    }
    Table table(std::move(titles));
    auto list = Json::array();
    ProgressLine progress("reading items");
    for (const auto& item : items) {
        progress.count();
        std::vector<std::string> row{PathString::string(item->path()), item->nodeType()};
        Json record{{"path", row[0]}, {"type", row[1]}};
        for (const auto& name : names) {
            const auto found = valueNamed(item, name);
            record[name] = found ? json(*found) : Json();
            row.push_back(found ? textOf(record[name]) : "");
        }
        table.add(std::move(row));
        list.push_back(std::move(record));
    }
    asJson ? output.line(jsonText(list, output, 2)) : table.write(output);
}

} // namespace app
