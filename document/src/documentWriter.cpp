#include <utility>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"
#include "kiv/document/losslessJson.h"
#include "kiv/hierarchy.h"
#include "kiv/host/itemProperties.h"
#include "kiv/material.h"
#include "kiv/pathString.h"

#include "documentFormat.h"
#include "documentProperties.h"

namespace Kiv_v4::document {

namespace {

namespace fs = std::filesystem;

Json pathJson(const Path& path)
{
    return losslessJson(PathString::string(path));
}

/// Adds `value` unless it is null or empty.
void addUnlessEmpty(Json& record, const char* key, Json value)
{
    if (!value.empty()) {
        record[key] = std::move(value);
    }
}

/// The present properties; those with initial values only if they differ from these.
Json recordOf(const host::ItemProperties& item, const PropertyList& properties)
{
    Json record;
    for (const auto& [property, initial] : properties) {
        const auto value = item.value(*property);
        if (value && !(initial && sameBits(*value, *initial))) {
            record[property->name] = losslessJson(*value);
        }
    }
    return record;
}

Json materialsOf(const SceneItem::Ptr& item)
{
    Json paths;
    for (const auto& material : Material::material(item)->materials()) {
        paths.push_back(pathJson(material->path()));
    }
    return paths;
}

/// The path without links.
fs::path real(const fs::path& path)
{
    return fs::weakly_canonical(fs::absolute(path));
}

/// The path without `..`: it keeps the links that it goes through, unless a `..` after one leads
/// elsewhere.
fs::path direct(const fs::path& path)
{
    const auto named = fs::absolute(path).lexically_normal();
    return real(named) == real(path) ? named : real(path);
}

bool isUnder(const fs::path& relative)
{
    return !relative.empty() && *relative.begin() != "..";
}

/// The file name in the document: relative to its folder if it is under that.
std::string storedFile(const std::string& file, const fs::path& folder)
{
    const auto full = direct(file);
    const auto relative = full.lexically_relative(direct(folder / "x").parent_path());
    if (isUnder(relative)) {
        return relative.string();
    }
    const auto realRelative = real(file).lexically_relative(real(folder / "x").parent_path());
    return (isUnder(realRelative) ? realRelative : full).string();
}

/// Makes the records of a document, whose folder is `folder`, of the items of `scene`.
class Writer
{
public:
    Writer(const Workspace& scene, const fs::path& folder) : _scene(scene), _folder(folder) {}

    Json document()
    {
        auto items = Json::array();
        auto connections = Json::array();
        std::vector<std::pair<SceneItem::Ptr, int>> pending{
            {_scene.root(), 0}}; // the last one is next
        while (!pending.empty()) {
            const auto [item, depth] = pending.back();
            pending.pop_back();
            items.push_back(recordOf(item, depth));
            addConnections(connections, item);
            const auto children = Hierarchy::hierarchy(item)->children();
            for (auto child = children.rbegin(); child != children.rend(); ++child) {
                if (_scene.isInMemory(**child)) {
                    pending.emplace_back(*child, depth + 1);
                }
            }
        }
        Json document{{"format", kFormat}, {"version", kVersion}, {"items", std::move(items)}};
        addUnlessEmpty(document, "connections", std::move(connections));
        return document;
    }

private:
    Json recordOf(const SceneItem::Ptr& item, int depth) const
    {
        Json record{{"depth", depth},
                    {"name", losslessJson(item->nodeName())},
                    {"type", losslessJson(item->nodeType())}};
        const host::ItemProperties properties(item);
        for (const auto* group : {host::kTransform, host::kCamera, host::kLight}) {
            addUnlessEmpty(record, group, document::recordOf(properties, propertiesOf(group)));
        }
        if (properties.value(visibleProperty()) == host::PropertyValue(false)) {
            record["visible"] = false;
        }
        if (const auto box = _scene.model().boundingBox(item->path());
            !sameBits(box.min, BoundingBox3d().min) || !sameBits(box.max, BoundingBox3d().max)) {
            record["boundingBox"] = {{"min", losslessJson(box.min)},
                                     {"max", losslessJson(box.max)}};
        }
        addUnlessEmpty(record, "materials", materialsOf(item));
        addUnlessEmpty(record, host::kGraphNode,
                       document::recordOf(properties, propertiesOf(host::kGraphNode)));
        addUnlessEmpty(record, "attributes", attributesOf(item));
        if (_scene.isGateway(*item)) {
            record["mount"] = mountAt(item->path());
        }
        return record;
    }

    Json attributesOf(const SceneItem::Ptr& item) const
    {
        Json records;
        const auto attributes = Attributes::attributes(item);
        for (const auto& name : attributes->attributeNames()) {
            records.push_back(attributeOf(*attributes->attribute(name)));
        }
        return records;
    }

    Json attributeOf(const Attribute& attribute) const
    {
        const auto type = attribute.type();
        Json record{{"name", losslessJson(attribute.name())}, {"type", type}};
        if (const auto* choice = dynamic_cast<const AttributeEnumString*>(&attribute)) {
            addUnlessEmpty(record, "enumValues", losslessJson(choice->enumValues()));
        }
        if (const auto* generic = dynamic_cast<const AttributeGeneric*>(&attribute)) {
            record["nativeType"] = losslessJson(generic->nativeType());
        }
        addUnlessEmpty(record, "value", losslessJson(value(attribute)));
        addUnlessEmpty(record, "metadata", metadataOf(attribute));
        return record;
    }

    Json metadataOf(const Attribute& attribute) const
    {
        Json records;
        for (const auto& key :
             _scene.model().metadataKeys(attribute.sceneItem()->path(), attribute.name())) {
            records.push_back(
                {{"key", losslessJson(key)}, {"value", losslessJson(attribute.metadata(key))}});
        }
        return records;
    }

    Json mountAt(const Path& gateway) const
    {
        auto record = Json::object();
        const auto mount = _scene.mountAt(gateway);
        if (!mount.file.empty()) {
            record["file"] = losslessJson(storedFile(mount.file, _folder));
        }
        if (!mount.runTime.empty() && mount.runTime != kUsualRunTime) {
            record["runTime"] = losslessJson(mount.runTime);
        }
        Json edits;
        for (const auto& edited : _scene.editedItems(gateway)) {
            edits.push_back(editsOf(edited));
        }
        addUnlessEmpty(record, "edits", std::move(edits));
        return record;
    }

    static Json editsOf(const EditedItem& edited)
    {
        const auto item = Hierarchy::createItem(edited.path);
        Json record{{"item", losslessJson(edited.path.getSegments().back().string())}};
        const host::ItemProperties properties(item);
        if (edited.transform) {
            record[host::kTransform] = document::recordOf(properties, fileTransformProperties());
        }
        if (edited.camera) {
            record[host::kCamera] = document::recordOf(properties, propertiesOf(host::kCamera));
        }
        if (edited.light) {
            record[host::kLight] = document::recordOf(properties, propertiesOf(host::kLight));
        }
        if (edited.visibility) {
            record["visible"] = losslessJson(*properties.value(visibleProperty()));
        }
        return record;
    }

    /// Adds the connections that begin at the item.
    static void addConnections(Json& records, const SceneItem::Ptr& item)
    {
        const auto end = [](const AttributeInfo& attribute) {
            return Json{{"item", pathJson(attribute.path())},
                        {"attribute", losslessJson(attribute.name())}};
        };
        const auto handler = ConnectionHandler::connectionHandler(item->runTimeId());
        for (const auto& connection : handler->connections(item)->allConnections()) {
            if (connection->src().path() == item->path()) {
                records.push_back(
                    {{"source", end(connection->src())}, {"destination", end(connection->dst())}});
            }
        }
    }

    const Workspace& _scene;
    const fs::path& _folder;
};

} // namespace

std::string documentOf(const Workspace& scene, const fs::path& folder)
{
    return Writer(scene, folder).document().dump(2) + "\n";
}

} // namespace Kiv_v4::document
