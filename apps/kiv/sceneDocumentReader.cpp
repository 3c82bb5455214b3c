#include <array>
#include <cmath>
#include <exception>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/material.h"
#include "kiv/object3d.h"
#include "kiv/sceneItemOps.h"
#include "kiv/uiNodeGraphNode.h"

#include "exactJson.h"
#include "sceneDocumentFields.h"
#include "sceneDocumentFormat.h"

namespace app {

using namespace Kiv_v4;

namespace {

namespace fs = std::filesystem;

/// What a step works with.
struct Target
{
    Mounting& scene;
    Edits& edits;
    SceneItem::Ptr item;
};

/// Reading makes steps of what the document says of an item, and checks it meanwhile; nothing
/// changes until they are carried out.
using Step = std::function<void(const Target&)>;
using Steps = std::vector<Step>;

using MaybePlace = std::optional<JsonPlace>;
using Vector2f = TypedVectorN<float, 2>;

/// A failure whose message begins with the place in the document.
struct PlacedError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Does `work` and puts the place in front of the reason for which it fails, unless that has a
/// closer one.
template <class Work>
void doAt(const std::string& pointer, Work work)
{
    try {
        work();
    } catch (const PlacedError&) {
        throw;
    } catch (const std::exception& error) {
        throw PlacedError(pointer + ": " + error.what());
    }
}

/// An interface of an item that must have it.
template <class Interface>
std::shared_ptr<Interface> required(std::shared_ptr<Interface> offered, const char* kind)
{
    if (!offered) {
        throw std::runtime_error(std::string("the item is no ") + kind);
    }
    return offered;
}

std::array<float, 1> elementsOf(float value)
{
    return {value};
}
template <class T, std::size_t N>
std::array<T, N> elementsOf(const TypedVectorN<T, N>& value)
{
    return value.vector;
}
std::array<float, 3> elementsOf(const Color3f& value)
{
    return value.color;
}

/// The value of a property; those of items in space are finite.
template <class T>
T finite(const JsonPlace& place)
{
    const auto value = place.as<T>();
    for (const auto element : elementsOf(value)) {
        if (!std::isfinite(element)) {
            place.fail("is not finite");
        }
    }
    return value;
}

/// Sets the property unless it is that already.
template <class Interface, class Value, class... Arguments>
void set(Edits& edits, Interface& interface, const Field<Interface, Value, Arguments...>& field,
         const Value& value)
{
    if (!sameBits((interface.*field.get)(), value)) {
        edits.run(
            std::apply([&](auto... elements) { return (interface.*field.setCmd)(elements...); },
                       elementsOf(value)));
    }
}

/// Values of some of the fields.
template <class AnyField, class Value>
using Values = std::vector<std::pair<const AnyField*, Value>>;

/// The values of those fields that the object has; their keys are added to `keys`.
template <class Interface, class Value, class... Arguments, std::size_t N>
auto valuesOf(const JsonPlace& place, const Field<Interface, Value, Arguments...> (&fields)[N],
              std::vector<std::string>& keys)
{
    Values<Field<Interface, Value, Arguments...>, Value> values;
    for (const auto& field : fields) {
        keys.emplace_back(field.key);
        if (const auto found = place.find(field.key)) {
            values.emplace_back(&field, finite<Value>(*found));
        }
    }
    return values;
}

template <class Interface, class AnyField, class Value>
void set(Edits& edits, Interface& interface, const Values<AnyField, Value>& values)
{
    for (const auto& [field, value] : values) {
        set(edits, interface, *field, value);
    }
}

/// All properties: what the document does not tell is that of a new item.
Step transformStep(const MaybePlace& place)
{
    std::array<Vector3d, std::size(kTransformFields)> wanted;
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto found = place ? place->find(kTransformFields[i].key) : std::nullopt;
        wanted[i] = found ? finite<Vector3d>(*found) : initialValue(kTransformFields[i]);
        keys.emplace_back(kTransformFields[i].key);
    }
    if (place) {
        place->requireOnly(keys);
    }
    return [wanted](const Target& target) {
        const auto transform = required(Transform3d::transform3d(target.item), "object in space");
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            set(target.edits, *transform, kTransformFields[i], wanted[i]);
        }
    };
}

constexpr Matrix4d kIdentity({{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}});

/// The matrix and, where it does not tell them exactly, the factors that were set. These alone make
/// a matrix that cannot be set as a whole, because it is flat.
Step fileTransformStep(const JsonPlace& place)
{
    std::vector<std::string> keys{"matrix"};
    const auto factors = valuesOf(place, kFactors, keys);
    place.requireOnly(keys);
    return [matrix = place.at("matrix").as<Matrix4d>(), factors](const Target& target) {
        const auto transform = required(Transform3d::transform3d(target.item), "object in space");
        const auto command = transform->setMatrixCmd(matrix);
        target.edits.run(command ? command : transform->setMatrixCmd(kIdentity));
        set(target.edits, *transform, factors);
    };
}

Step cameraStep(const JsonPlace& place)
{
    std::vector<std::string> keys{"orthographic"};
    const auto values = valuesOf(place, kCameraFields, keys);
    place.requireOnly(keys);
    const auto projection =
        place.at("orthographic").as<bool>() ? Camera::Orthographic : Camera::Perspective;
    return [values, projection](const Target& target) {
        const auto camera = required(Camera::camera(target.item), "camera");
        set(target.edits, *camera, values);
        target.edits.run(camera->projectionCmd(projection));
    };
}

/// A field of the light that only lights of a kind have, if it is there.
template <class T>
std::optional<T> kindField(const JsonPlace& place, const char* key, std::vector<std::string>& keys)
{
    keys.emplace_back(key);
    const auto found = place.find(key);
    if constexpr (std::is_same_v<T, bool>) {
        return found ? std::optional(found->as<bool>()) : std::nullopt;
    } else {
        return found ? std::optional(finite<T>(*found)) : std::nullopt;
    }
}

/// What only the lights of a kind have: of these an object has all the fields or none.
Step lightKindStep(const JsonPlace& place, std::vector<std::string>& keys)
{
    const auto angle = kindField<float>(place, "angle", keys);
    const auto radius = kindField<float>(place, "radius", keys);
    const auto asPoint = kindField<bool>(place, "asPoint", keys);
    const auto coneAngle = kindField<float>(place, "coneAngle", keys);
    const auto penumbra = kindField<float>(place, "penumbraAngle", keys);
    const auto dropoff = kindField<float>(place, "dropoff", keys);
    const auto normalize = kindField<bool>(place, "normalize", keys);
    if (radius.has_value() != asPoint.has_value()) {
        place.fail("has one of 'radius' and 'asPoint' only");
    }
    if (coneAngle.has_value() != penumbra.has_value() ||
        coneAngle.has_value() != dropoff.has_value()) {
        place.fail("has some of 'coneAngle', 'penumbraAngle' and 'dropoff' only");
    }
    return [=](const Target& target) {
        const auto light = required(Light::light(target.item), "light");
        if (angle) {
            target.edits.run(
                required(light->directionalInterface(), "directional light")->angleCmd(*angle));
        }
        if (radius) {
            target.edits.run(required(light->sphereInterface(), "point or spot light")
                                 ->spherePropsCmd(*radius, *asPoint));
        }
        if (coneAngle) {
            target.edits.run(required(light->coneInterface(), "spot light")
                                 ->conePropsCmd(*coneAngle, *penumbra, *dropoff));
        }
        if (normalize) {
            target.edits.run(
                required(light->areaInterface(), "area light")->normalizeCmd(*normalize));
        }
    };
}

Step lightStep(const JsonPlace& place)
{
    std::vector<std::string> keys{"shadowEnable"};
    const auto values = valuesOf(place, kLightFields, keys);
    const auto colors = valuesOf(place, kLightColorFields, keys);
    const auto ofKind = lightKindStep(place, keys);
    place.requireOnly(keys);
    return [values, colors, ofKind,
            shadow = place.at("shadowEnable").as<bool>()](const Target& target) {
        const auto light = required(Light::light(target.item), "light");
        set(target.edits, *light, values);
        set(target.edits, *light, colors);
        target.edits.run(light->shadowEnableCmd(shadow));
        ofKind(target);
    };
}

Step visibilityStep(const MaybePlace& place)
{
    return [visible = !place || place->as<bool>()](const Target& target) {
        const auto object = required(Object3d::object3d(target.item), "object in space");
        target.edits.run(object->setVisibilityCmd(visible));
    };
}

Step boundingBoxStep(const MaybePlace& place)
{
    BoundingBox3d box;
    if (place) {
        place->requireOnly({"min", "max"});
        box = {place->at("min").as<Vector3d>(), place->at("max").as<Vector3d>()};
    }
    return [box](const Target& target) {
        target.edits.run(target.scene.model().setBoundingBoxCmd(target.item->path(), box));
    };
}

Step graphNodeStep(const JsonPlace& place)
{
    place.requireOnly({"position", "size"});
    const auto valueOf = [&place](const char* key) {
        const auto found = place.find(key);
        return found ? std::optional(finite<Vector2f>(*found)) : std::nullopt;
    };
    return [position = valueOf("position"), size = valueOf("size")](const Target& target) {
        const auto node = required(UINodeGraphNode_v4_1::uiNodeGraphNode(target.item), "node");
        if (position) {
            target.edits.run(node->setPositionCmd(*position));
        }
        if (size) {
            target.edits.run(node->setSizeCmd(*size));
        }
    };
}

using AttributeStep = std::function<void(const Target&, Attribute&)>;

/// Sets the value; null when the document has none.
AttributeStep attributeValueStep(const JsonPlace& place, const std::string& type)
{
    AttributeStep step;
    const auto value = place.find("value");
    const auto read = [&]<class A>(AttributeClass<A>) {
        if (value) {
            using T = decltype(std::declval<const A&>().get());
            step = [newValue = value->as<T>()](const Target& target, Attribute& attribute) {
                target.edits.run(dynamic_cast<A&>(attribute).setCmd(newValue));
            };
        }
    };
    if (!visitAttributeClass(type, read)) {
        if (type != Attribute::kGeneric) {
            place.at("type").fail("is no type of attributes");
        }
        if (value) {
            value->fail("is of an attribute that has none");
        }
    }
    return step;
}

/// What an attribute of one type has, and no command sets; an attribute that is new needs none.
AttributeStep attributeTypeStep(const JsonPlace& place)
{
    const auto enumValues = place.find("enumValues");
    const auto nativeType = place.find("nativeType");
    return [texts = enumValues ? enumValues->as<std::vector<std::string>>()
                               : AttributeEnumString::EnumValues(),
            native = nativeType ? nativeType->as<std::string>()
                                : std::string()](const Target& target, Attribute& attribute) {
        auto& model = target.scene.model();
        if (!texts.empty()) {
            model.setEnumValues(target.item->path(), attribute.name(), texts);
        }
        if (!native.empty()) {
            model.setNativeType(target.item->path(), attribute.name(), native);
        }
    };
}

AttributeStep metadataStep(const JsonPlace& place)
{
    std::vector<std::pair<std::string, Value>> entries;
    for (const auto& entry : place.elements()) {
        entry.requireOnly({"key", "value"});
        entries.emplace_back(entry.at("key").as<std::string>(), entry.at("value").as<Value>());
    }
    return [entries](const Target& target, Attribute& attribute) {
        for (const auto& [key, value] : entries) {
            target.edits.run(attribute.setMetadataCmd(key, value));
        }
    };
}

Step attributeStep(const JsonPlace& place, const std::string& name)
{
    place.requireOnly({"name", "type", "enumValues", "nativeType", "value", "metadata"});
    const auto type = place.at("type").as<std::string>();
    std::vector<AttributeStep> steps{attributeTypeStep(place)};
    if (auto value = attributeValueStep(place, type)) {
        steps.push_back(std::move(value));
    }
    if (const auto metadata = place.find("metadata")) {
        steps.push_back(metadataStep(*metadata));
    }
    return [name, type, steps, pointer = place.pointer()](const Target& target) {
        doAt(pointer, [&] {
            const auto attributes = required(Attributes::attributes(target.item), "item in memory");
            const auto attribute =
                target.edits.runFor(attributes->addAttributeCmd(type, name))->attribute();
            if (attribute->name() != name) {
                throw std::runtime_error("'" + name + "' is no name for an attribute");
            }
            for (const auto& step : steps) {
                step(target, *attribute);
            }
        });
    };
}

/// What the document says of an item in memory.
struct ItemPlan
{
    std::string pointer;
    std::size_t parent = 0; ///< Its position in the document.
    std::string name;
    std::string type;
    Steps steps{};
    std::vector<std::size_t> materials{};
    std::set<std::string> attributes{}; ///< Their names.
};

/// An attribute at an end of a connection: the position of its item, and its name.
struct End
{
    std::size_t item;
    std::string attribute;
};

struct ConnectionPlan
{
    std::string pointer;
    End source;
    End destination;
};

struct Plan
{
    std::vector<ItemPlan> items; ///< The root first, parents before their children.
    std::vector<ConnectionPlan> connections;
};

/// Reads and checks a document as a whole.
class Reader
{
public:
    Reader(const Mounting& scene, const fs::path& folder) : _scene(scene), _folder(folder) {}

    Plan read(const Json& json)
    {
        const JsonPlace document(json);
        requireFormat(json, document);
        const auto items = document.at("items").elements();
        for (const auto& item : items) {
            addItem(item);
        }
        if (items.empty()) {
            document.at("items").fail("has not even the root");
        }
        for (std::size_t i = 0; i < items.size(); ++i) {
            addMaterials(_plan.items[i], items[i]);
        }
        if (const auto connections = document.find("connections")) {
            for (const auto& connection : connections->elements()) {
                addConnection(connection);
            }
        }
        readFiles();
        return std::move(_plan);
    }

private:
    /// A scene file that is mounted, once or more.
    struct Source
    {
        std::string pointer;
        Mounting::File file;
    };
    using SourcePtr = std::shared_ptr<Source>;

    struct FileEdit
    {
        std::string pointer;
        std::string item;
        Steps steps;
    };

    static void requireFormat(const Json& json, const JsonPlace& document)
    {
        if (!json.is_object() || !json.contains("format") || json["format"] != kFormat) {
            document.fail("is no scene document");
        }
        const auto version = document.at("version").as<int>();
        if (version > kVersion) {
            document.fail("is of version " + std::to_string(version) +
                          ", this program reads up to " + std::to_string(kVersion));
        }
        if (version < 1) {
            document.at("version").fail("is no version");
        }
        document.requireOnly({"format", "version", "items", "connections"});
    }

    void addItem(const JsonPlace& place)
    {
        place.requireOnly({"depth", "name", "type", "transform", "camera", "light", "visible",
                           "boundingBox", "materials", "graphNode", "attributes", "mount"});
        const auto isRoot = _plan.items.empty();
        ItemPlan item{place.pointer(), parentOf(place), place.at("name").as<std::string>(),
                      place.at("type").as<std::string>()};
        const auto index = _plan.items.size();
        if (isRoot) {
            requireRoot(place, item);
        } else if (!_positions.emplace(std::pair(item.parent, item.name), index).second) {
            place.at("name").fail("is that of another child of the same item");
        }
        addSteps(item, place, isRoot);
        _plan.items.push_back(std::move(item));
    }

    /// The position of the item's parent: the last one before it that is one level higher.
    std::size_t parentOf(const JsonPlace& place)
    {
        const auto depth = place.at("depth");
        const auto level = static_cast<std::size_t>(depth.as<int>());
        const auto lowest = _lineage.empty() ? 0U : 1U;
        if (level < lowest || level > _lineage.size()) {
            depth.fail("is not between " + std::to_string(lowest) + " and " +
                       std::to_string(_lineage.size()));
        }
        _lineage.resize(level);
        const auto parent = _lineage.empty() ? 0 : _lineage.back();
        _lineage.push_back(_plan.items.size());
        return parent;
    }

    void requireRoot(const JsonPlace& place, const ItemPlan& item) const
    {
        const auto root = _scene.root();
        if (item.name != root->nodeName() || item.type != root->nodeType()) {
            place.fail("is not '" + root->nodeName() + "' of type '" + root->nodeType() +
                       "', the root of every scene");
        }
    }

    /// The root is there already: what the document does not tell of it is set back.
    void addSteps(ItemPlan& item, const JsonPlace& place, bool isRoot)
    {
        const auto add = [&](const char* key, auto makeStep) {
            const auto found = place.find(key);
            if constexpr (std::is_invocable_v<decltype(makeStep), const MaybePlace&>) {
                if (found || isRoot) {
                    item.steps.push_back(makeStep(found));
                }
            } else if (found) {
                item.steps.push_back(makeStep(*found));
            }
        };
        add("transform", &transformStep);
        add("camera", &cameraStep);
        add("light", &lightStep);
        add("visible", &visibilityStep);
        add("boundingBox", &boundingBoxStep);
        add("graphNode", &graphNodeStep);
        if (const auto attributes = place.find("attributes")) {
            for (const auto& attribute : attributes->elements()) {
                addAttribute(item, attribute);
            }
        }
        add("mount", [this](const JsonPlace& mount) { return mountStep(mount); });
    }

    static void addAttribute(ItemPlan& item, const JsonPlace& place)
    {
        const auto name = place.at("name");
        const auto inserted = item.attributes.insert(name.as<std::string>());
        if (!inserted.second) {
            name.fail("is that of another attribute of the item");
        }
        item.steps.push_back(attributeStep(place, *inserted.first));
    }

    Step mountStep(const JsonPlace& place)
    {
        place.requireOnly({"file", "edits"});
        const auto file = place.find("file");
        const auto source = file ? sourceOf(*file) : nullptr;
        std::vector<FileEdit> edits;
        if (const auto edited = place.find("edits")) {
            for (const auto& item : edited->elements()) {
                edits.push_back(fileEdit(item));
            }
        }
        return [source, edits](const Target& target) {
            const auto& gateway = target.item->path();
            target.edits.run(target.scene.gatewayCmd(gateway, source ? source->file : nullptr));
            for (const auto& edit : edits) {
                doAt(edit.pointer, [&] { carryOut(edit, target, gateway); });
            }
        };
    }

    SourcePtr sourceOf(const JsonPlace& place)
    {
        const auto name = place.as<std::string>();
        if (name.empty()) {
            place.fail("is empty");
        }
        auto& source = _sources[(_folder / name).string()];
        if (!source) {
            source = std::make_shared<Source>(Source{place.pointer(), nullptr});
        }
        return source;
    }

    static FileEdit fileEdit(const JsonPlace& place)
    {
        place.requireOnly({"item", "transform", "camera", "light", "visible"});
        FileEdit edit{place.pointer(), place.at("item").as<std::string>(), {}};
        const auto add = [&](const char* key, auto makeStep) {
            if (const auto found = place.find(key)) {
                edit.steps.push_back(makeStep(*found));
            }
        };
        add("transform", &fileTransformStep);
        add("camera", &cameraStep);
        add("light", &lightStep);
        add("visible", &visibilityStep);
        return edit;
    }

    static void carryOut(const FileEdit& edit, const Target& target, const Path& gateway)
    {
        const auto item = Hierarchy::createItem(target.scene.pathInFile(gateway, edit.item));
        if (!item) {
            throw std::runtime_error("the file has no item '" + edit.item + "'");
        }
        for (const auto& step : edit.steps) {
            step({target.scene, target.edits, item});
        }
    }

    /// The position of the item that a path names.
    [[nodiscard]] std::size_t positionAt(const JsonPlace& place) const
    {
        const auto text = place.as<std::string>();
        const PathSegment segment(text, 0, memory::DataModel::kSeparator);
        std::size_t position = 0;
        auto names = segment.begin();
        auto isThere = names != segment.end() && names->string() == _plan.items.front().name;
        while (isThere && ++names != segment.end()) {
            const auto child = _positions.find({position, names->string()});
            isThere = child != _positions.end();
            position = isThere ? child->second : position;
        }
        if (!isThere) {
            place.fail("'" + text + "' names no item of the document");
        }
        return position;
    }

    void addMaterials(ItemPlan& item, const JsonPlace& place) const
    {
        if (const auto materials = place.find("materials")) {
            for (const auto& material : materials->elements()) {
                item.materials.push_back(positionAt(material));
            }
        }
    }

    void addConnection(const JsonPlace& place)
    {
        place.requireOnly({"source", "destination"});
        _plan.connections.push_back(
            {place.pointer(), endAt(place.at("source")), endAt(place.at("destination"))});
    }

    [[nodiscard]] End endAt(const JsonPlace& place) const
    {
        place.requireOnly({"item", "attribute"});
        const auto name = place.at("attribute");
        End end{positionAt(place.at("item")), name.as<std::string>()};
        if (_plan.items[end.item].attributes.count(end.attribute) == 0) {
            name.fail("'" + end.attribute + "' is no attribute of the item");
        }
        return end;
    }

    void readFiles() const
    {
        for (const auto& [name, source] : _sources) {
            doAt(source->pointer + ": " + name,
                 [&, &file = name, &read = source->file] { read = _scene.read(file); });
        }
    }

    const Mounting& _scene;
    const fs::path& _folder;
    Plan _plan;
    std::vector<std::size_t> _lineage; ///< The positions of the last item and its ancestors.
    std::map<std::pair<std::size_t, std::string>, std::size_t> _positions; ///< By parent and name.
    std::map<std::string, SourcePtr> _sources;                             ///< By file name.
};

/// Carries a plan out.
class Builder
{
public:
    Builder(Mounting& scene, Edits& edits) : _scene(scene), _edits(edits) {}

    void build(const Plan& plan)
    {
        clear();
        for (const auto& item : plan.items) {
            doAt(item.pointer, [&] { build(item); });
        }
        for (std::size_t i = 0; i < plan.items.size(); ++i) {
            doAt(plan.items[i].pointer, [&] { bindMaterials(plan.items[i], *_items[i]); });
        }
        for (const auto& connection : plan.connections) {
            doAt(connection.pointer, [&] { connect(connection); });
        }
    }

private:
    void clear()
    {
        const auto root = _scene.root();
        for (const auto& child : Hierarchy::hierarchy(root)->children()) {
            if (_scene.isInMemory(*child)) {
                _edits.run(SceneItemOps::sceneItemOps(child)->deleteItemCmd());
            }
        }
        const auto attributes = Attributes::attributes(root);
        for (const auto& name : attributes->attributeNames()) {
            _edits.run(attributes->removeAttributeCmd(name));
        }
    }

    void build(const ItemPlan& plan)
    {
        const auto item = _items.empty() ? _scene.root() : make(plan);
        _items.push_back(item);
        for (const auto& step : plan.steps) {
            step({_scene, _edits, item});
        }
    }

    SceneItem::Ptr make(const ItemPlan& plan)
    {
        const auto parent = Hierarchy::hierarchy(_items[plan.parent]);
        const auto item = _edits.runFor(parent->createChildCmd(plan.type, plan.name))->sceneItem();
        if (item->nodeName() != plan.name) {
            throw std::runtime_error("'" + plan.name + "' is no name for an item");
        }
        return item;
    }

    void bindMaterials(const ItemPlan& plan, const SceneItem& item)
    {
        std::vector<Path> materials;
        for (const auto position : plan.materials) {
            materials.push_back(_items[position]->path());
        }
        if (!materials.empty() || &item == _items.front().get()) {
            _edits.run(_scene.model().setMaterialsCmd(item.path(), materials));
        }
    }

    void connect(const ConnectionPlan& plan)
    {
        const auto attribute = [this](const End& end) {
            return Attributes::attributes(_items[end.item])->attribute(end.attribute);
        };
        const auto handler = ConnectionHandler::connectionHandler(_scene.root()->runTimeId());
        _edits.run(handler->connectCmd(attribute(plan.source), attribute(plan.destination)));
    }

    Mounting& _scene;
    Edits& _edits;
    std::vector<SceneItem::Ptr> _items; ///< In the order of the plan.
};

} // namespace

void openDocument(Mounting& scene, const std::string& text, const fs::path& folder, Edits& edits)
{
    const auto plan = Reader(scene, folder).read(parsedJson(text));
    Builder(scene, edits).build(plan);
}

} // namespace app
