#include "kiv/attributeVariant.h"
#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"
#include "kiv/pathString.h"

#include "report/itemReport.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// The metadata keys to ask for: the interface does not list those that an attribute has.
constexpr const char* kMetadataKeys[] = {Attribute::kLocked};

/// The value as its type has it; as display text when the library has no name for the type.
Json valueOf(const Attribute& attribute)
{
    if (!attribute.hasValue()) {
        return {};
    }
    const auto typed = value(attribute);
    return std::holds_alternative<std::monostate>(typed) ? Json(attribute.string()) : json(typed);
}

Json metadataOf(const Attribute& attribute)
{
    auto metadata = Json::object();
    for (const auto* key : kMetadataKeys) {
        if (attribute.hasMetadata(key)) {
            metadata[key] = json(attribute.metadata(key));
        }
    }
    return metadata;
}

Json recordOf(const Attribute& attribute, const AttributeDef::Ptr& definition)
{
    Json record{{"name", attribute.name()},
                {"displayName", attribute.displayName()},
                {"type", attribute.type()}};
    if (const auto* generic = dynamic_cast<const AttributeGeneric*>(&attribute)) {
        record["nativeType"] = generic->nativeType();
    }
    record["value"] = valueOf(attribute);
    if (const auto* choice = dynamic_cast<const AttributeEnumString*>(&attribute)) {
        record["enumValues"] = choice->enumValues();
    }
    if (definition) {
        record["default"] = definition->defaultValue();
    }
    record["metadata"] = metadataOf(attribute);
    return record;
}

/// What a record says beside the name and the value.
std::string detailsOf(const Json& record)
{
    auto text = textOf(record["type"]);
    if (record.contains("nativeType")) {
        text += " " + textOf(record["nativeType"]);
    }
    if (record["displayName"] != record["name"]) {
        text += "; shown as " + textOf(record["displayName"]);
    }
    if (record.contains("enumValues")) {
        text += "; one of " + textOf(record["enumValues"]);
    }
    if (record.contains("default")) {
        text += "; by default " + textOf(record["default"]);
    }
    for (const auto& [key, value] : record["metadata"].items()) {
        text += "; " + key + ": " + textOf(value);
    }
    return text;
}

Fact factOf(const Attribute& attribute, const AttributeDef::Ptr& definition)
{
    auto record = recordOf(attribute, definition);
    const auto value = attribute.hasValue() ? attribute.string() : textOf({});
    const auto line = value + "  (" + detailsOf(record) + ")";
    return {"", attribute.name(), std::move(record), "", {line}};
}

Json endOf(const AttributeInfo& end)
{
    return {{"path", PathString::string(end.path())}, {"attribute", end.name()}};
}

/// Labelled by the end that lies on the item; by the source when both do.
Fact factOf(const Connection& connection, const Path& path)
{
    const auto leaves = connection.src().path() == path;
    const auto& own = leaves ? connection.src() : connection.dst();
    const auto& other = leaves ? connection.dst() : connection.src();
    const auto line =
        (leaves ? "to " : "from ") + PathString::string(other.path()) + " " + other.name();
    return {"",
            own.name(),
            {{"source", endOf(connection.src())}, {"destination", endOf(connection.dst())}},
            "",
            {line}};
}

} // namespace

Section attributes(const SceneItem::Ptr& item)
{
    Section section{"attributes", "attributes", {}, Section::Form::List};
    const auto attributes = Attributes::attributes(item);
    if (!attributes) {
        return section;
    }
    const auto described = std::dynamic_pointer_cast<Attributes_v4_2>(attributes);
    for (const auto& name : attributes->attributeNames()) {
        if (const auto attribute = attributes->attribute(name)) {
            section.facts.push_back(
                factOf(*attribute, described ? described->attributeDef(name) : nullptr));
        }
    }
    return section;
}

Section connections(const SceneItem::Ptr& item)
{
    Section section{"connections", "connections", {}, Section::Form::List};
    const auto handler = ConnectionHandler::connectionHandler(item->runTimeId());
    const auto connections = handler ? handler->connections(item) : nullptr;
    if (connections) {
        for (const auto& connection : connections->allConnections()) {
            section.facts.push_back(factOf(*connection, item->path()));
        }
    }
    return section;
}

} // namespace app
