#include "sceneDocumentSteps.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

#include "kiv/attributes.h"
#include "kiv/object3d.h"
#include "kiv/uiNodeGraphNode.h"

#include "attributeClasses.h"
#include "properties.h"

namespace app {

using namespace Kiv_v4;

namespace {

using Vector2f = TypedVectorN<float, 2>;

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

constexpr Matrix4d kIdentity({{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}});

} // namespace

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

Step fileTransformStep(const JsonPlace& place)
{
    std::vector<std::string> keys{"matrix"};
    const auto factors = valuesOf(place, kFactors, keys);
    place.requireOnly(keys);
    return [matrix = place.at("matrix").as<Matrix4d>(), factors](const Target& target) {
        const auto transform = required(Transform3d::transform3d(target.item), "object in space");
        // A flat matrix is not set as a whole; its factors alone make it.
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

namespace {

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

} // namespace

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

namespace {

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

} // namespace

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

} // namespace app
