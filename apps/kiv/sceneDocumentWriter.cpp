#include <utility>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/material.h"
#include "kiv/object3d.h"
#include "kiv/pathString.h"
#include "kiv/uiNodeGraphNode.h"

#include "attributeClasses.h"
#include "exactJson.h"
#include "properties.h"
#include "sceneDocumentFormat.h"

namespace app {

using namespace Kiv_v4;

namespace {

namespace fs = std::filesystem;

Json pathJson(const Path& path)
{
    return exactJson(PathString::string(path));
}

/// Adds `value` unless it is null or has nothing in it.
void addUnlessEmpty(Json& record, const char* key, Json value)
{
    if (!value.empty()) {
        record[key] = std::move(value);
    }
}

Json transformOf(const SceneItem::Ptr& item)
{
    Json record;
    const auto transform = Transform3d::transform3d(item);
    for (const auto& field : kTransformFields) {
        const auto value = (*transform.*field.get)();
        if (!sameBits(value, initialValue(field))) {
            record[field.key] = exactJson(value);
        }
    }
    return record;
}

/// The matrix, which a file's item has whatever its properties, and the factors for those that edit
/// it further.
Json fileTransformOf(const SceneItem::Ptr& item)
{
    const auto transform = Transform3d::transform3d(item);
    Json record{{"matrix", exactJson(transform->matrix())}};
    for (const auto& field : kFactors) {
        record[field.key] = exactJson((*transform.*field.get)());
    }
    return record;
}

Json cameraOf(const SceneItem::Ptr& item)
{
    Json record;
    if (const auto camera = Camera::camera(item)) {
        record["orthographic"] = camera->projection() == Camera::Orthographic;
        for (const auto& field : kCameraFields) {
            record[field.key] = exactJson((*camera.*field.get)());
        }
    }
    return record;
}

/// What only the lights of a kind have.
void addOfKind(Json& record, Light& light)
{
    if (const auto directional = light.directionalInterface()) {
        record["angle"] = exactJson(directional->angle());
    }
    if (const auto sphere = light.sphereInterface()) {
        const auto props = sphere->sphereProps();
        record["radius"] = exactJson(props.radius);
        record["asPoint"] = props.asPoint;
    }
    if (const auto cone = light.coneInterface()) {
        const auto props = cone->coneProps();
        record["coneAngle"] = exactJson(props.coneAngle);
        record["penumbraAngle"] = exactJson(props.penumbraAngle);
        record["dropoff"] = exactJson(props.dropoff);
    }
    if (const auto area = light.areaInterface()) {
        record["normalize"] = area->normalize();
    }
}

Json lightOf(const SceneItem::Ptr& item)
{
    Json record;
    if (const auto light = Light::light(item)) {
        for (const auto& field : kLightFields) {
            record[field.key] = exactJson((*light.*field.get)());
        }
        for (const auto& field : kLightColorFields) {
            record[field.key] = exactJson((*light.*field.get)());
        }
        record["shadowEnable"] = light->shadowEnable();
        addOfKind(record, *light);
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

/// The place in a node editor.
Json graphNodeOf(const SceneItem::Ptr& item)
{
    Json record;
    const auto node = UINodeGraphNode_v4_1::uiNodeGraphNode(item);
    if (node->hasPosition()) {
        record["position"] = exactJson(node->position());
    }
    if (node->hasSize()) {
        record["size"] = exactJson(node->size());
    }
    return record;
}

/// The path without links.
fs::path real(const fs::path& path)
{
    return fs::weakly_canonical(fs::absolute(path));
}

/// The path without `..`: with the links that it goes through, unless a `..` leads elsewhere there.
fs::path direct(const fs::path& path)
{
    const auto named = fs::absolute(path).lexically_normal();
    return real(named) == real(path) ? named : real(path);
}

bool isUnder(const fs::path& relative)
{
    return !relative.empty() && *relative.begin() != "..";
}

/// As it is found in the document: relative to its folder when it is under that.
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
    Writer(const Mounting& scene, const fs::path& folder) : _scene(scene), _folder(folder) {}

    Json document()
    {
        auto items = Json::array();
        auto connections = Json::array();
        std::vector<std::pair<SceneItem::Ptr, int>> pending{
            {_scene.root(), 0}}; // the next one last
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
                    {"name", exactJson(item->nodeName())},
                    {"type", exactJson(item->nodeType())}};
        addUnlessEmpty(record, "transform", transformOf(item));
        addUnlessEmpty(record, "camera", cameraOf(item));
        addUnlessEmpty(record, "light", lightOf(item));
        if (!Object3d::object3d(item)->visibility()) {
            record["visible"] = false;
        }
        if (const auto box = _scene.model().boundingBox(item->path());
            !sameBits(box, BoundingBox3d())) {
            record["boundingBox"] = {{"min", exactJson(box.min)}, {"max", exactJson(box.max)}};
        }
        addUnlessEmpty(record, "materials", materialsOf(item));
        addUnlessEmpty(record, "graphNode", graphNodeOf(item));
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
        Json record{{"name", exactJson(attribute.name())}, {"type", type}};
        if (const auto* choice = dynamic_cast<const AttributeEnumString*>(&attribute)) {
            addUnlessEmpty(record, "enumValues", exactJson(choice->enumValues()));
        }
        if (const auto* generic = dynamic_cast<const AttributeGeneric*>(&attribute)) {
            record["nativeType"] = exactJson(generic->nativeType());
        }
        if (attribute.hasValue()) {
            visitAttributeClass(type, [&]<class A>(AttributeClass<A>) {
                record["value"] = exactJson(dynamic_cast<const A&>(attribute).get());
            });
        }
        addUnlessEmpty(record, "metadata", metadataOf(attribute));
        return record;
    }

    Json metadataOf(const Attribute& attribute) const
    {
        Json records;
        for (const auto& key :
             _scene.model().metadataKeys(attribute.sceneItem()->path(), attribute.name())) {
            records.push_back(
                {{"key", exactJson(key)}, {"value", exactJson(attribute.metadata(key))}});
        }
        return records;
    }

    Json mountAt(const Path& gateway) const
    {
        auto record = Json::object();
        const auto file = _scene.mountedFile(gateway);
        if (!file.empty()) {
            record["file"] = exactJson(storedFile(file, _folder));
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
        Json record{{"item", exactJson(edited.path.getSegments().back().string())}};
        if (edited.transform) {
            record["transform"] = fileTransformOf(item);
        }
        if (edited.camera) {
            record["camera"] = cameraOf(item);
        }
        if (edited.light) {
            record["light"] = lightOf(item);
        }
        if (edited.visibility) {
            record["visible"] = Object3d::object3d(item)->visibility();
        }
        return record;
    }

    /// Adds those that begin at the item.
    static void addConnections(Json& records, const SceneItem::Ptr& item)
    {
        const auto end = [](const AttributeInfo& attribute) {
            return Json{{"item", pathJson(attribute.path())},
                        {"attribute", exactJson(attribute.name())}};
        };
        const auto handler = ConnectionHandler::connectionHandler(item->runTimeId());
        for (const auto& connection : handler->connections(item)->allConnections()) {
            if (connection->src().path() == item->path()) {
                records.push_back(
                    {{"source", end(connection->src())}, {"destination", end(connection->dst())}});
            }
        }
    }

    const Mounting& _scene;
    const fs::path& _folder;
};

} // namespace

std::string documentOf(const Mounting& scene, const fs::path& folder)
{
    return Writer(scene, folder).document().dump(2) + "\n";
}

} // namespace app
