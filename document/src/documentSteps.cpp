#include "documentSteps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

#include "kiv/attributes.h"
#include "kiv/host/itemProperties.h"
#include "kiv/object3d.h"
#include "kiv/transform3dRead.h"

namespace Kiv_v4::document {

namespace {

template <class T>
bool isFinite([[maybe_unused]] const T& value)
{
    if constexpr (std::is_arithmetic_v<T>) {
        return std::isfinite(static_cast<double>(value));
    } else {
        return true; // texts, and matrices, which the run-time checks
    }
}
template <class T, std::size_t N>
bool isFinite(const std::array<T, N>& elements)
{
    return std::ranges::all_of(elements, [](const T& element) { return isFinite(element); });
}
template <class T, std::size_t N>
bool isFinite(const TypedVectorN<T, N>& value)
{
    return isFinite(value.vector);
}
template <class T, std::size_t N>
bool isFinite(const TypedColorN<T, N>& value)
{
    return isFinite(value.color);
}

/// The value of a property; those of items in space are finite.
host::PropertyValue valueAt(const JsonCursor& place, const host::Property& property)
{
    auto value = place.as(*initialValue(property.type));
    if (!std::visit([](const auto& typed) { return isFinite(typed); }, value)) {
        place.fail("not a finite number");
    }
    const auto* choice = std::get_if<EnumStringValue>(&value);
    if (choice && std::ranges::find(property.choices, choice->text) == property.choices.end()) {
        place.fail("unknown " + property.label + " '" + choice->text + "'");
    }
    return value;
}

using Values = std::vector<std::pair<const host::Property*, host::PropertyValue>>;

/// The values of the fields of an object, which must all be in the list.
Values valuesAt(const JsonCursor& place, const PropertyList& properties)
{
    Values values;
    for (const auto& [key, field] : place.fields()) {
        const auto found = std::ranges::find_if(properties, [&name = key](const auto& stored) {
            return stored.property->name == name;
        });
        if (found == properties.end()) {
            field.fail("unknown field");
        }
        values.emplace_back(found->property, valueAt(field, *found->property));
    }
    return values;
}

/// Sets the property unless it already has the value.
void set(host::Transaction& edits, const host::ItemProperties& item, const host::Property& property,
         const host::PropertyValue& value)
{
    const auto now = item.value(property);
    if (!now || !sameBits(*now, value)) {
        edits.run(item.setCmd(property, value));
    }
}

void set(const Target& target, const host::Property& property, const host::PropertyValue& value)
{
    set(target.edits, host::ItemProperties(target.item), property, value);
}

Step valuesStep(Values values)
{
    return [values = std::move(values)](const Target& target) {
        const host::ItemProperties item(target.item);
        for (const auto& [property, value] : values) {
            set(target.edits, item, *property, value);
        }
    };
}

constexpr Matrix4d kIdentity({{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}});

} // namespace

Step propertiesStep(const JsonCursor& place, const PropertyList& properties)
{
    return valuesStep(valuesAt(place, properties));
}

Step initialStep(const MaybeCursor& place, const PropertyList& properties)
{
    Values values;
    for (const auto& [property, initial] : properties) {
        if (!place || !place->find(property->name.c_str())) {
            values.emplace_back(property, *initial);
        }
    }
    return valuesStep(std::move(values));
}

Step fileTransformStep(const JsonCursor& place)
{
    const auto& properties = fileTransformProperties();
    (void)place.at(properties.front().property->name.c_str());
    auto factors = valuesAt(place, properties);
    const auto whole =
        std::ranges::find(factors, properties.front().property, &Values::value_type::first);
    const auto matrix = whole->second;
    factors.erase(whole);
    return [&property = *properties.front().property, matrix,
            setFactors = valuesStep(std::move(factors))](const Target& target) {
        const host::ItemProperties item(target.item);
        // A singular matrix cannot be set; only its factors can.
        const auto command = item.setCmd(property, matrix);
        target.edits.run(command ? command : item.setCmd(property, kIdentity));
        setFactors(target);
    };
}

Step visibilityStep(const MaybeCursor& place)
{
    return [visible = !place || place->as<bool>()](const Target& target) {
        set(target, visibleProperty(), visible);
    };
}

Step boundingBoxStep(const MaybeCursor& place)
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

namespace {

using AttributeStep = std::function<void(const Target&, Attribute&)>;

/// Sets the value; null if the document has none.
AttributeStep attributeValueStep(const JsonCursor& place, const std::string& type)
{
    const auto value = place.find("value");
    const auto kind = initialValue(type);
    if (!kind) {
        place.at("type").fail("unknown attribute type");
    }
    if (!value) {
        return {};
    }
    if (std::holds_alternative<std::monostate>(*kind)) {
        value->fail("generic attributes have no value");
    }
    return [newValue = value->as(*kind)](const Target& target, Attribute& attribute) {
        target.edits.run(setValueCmd(attribute, newValue));
    };
}

/// The data of an attribute that no command sets; a new attribute needs none.
AttributeStep attributeTypeStep(const JsonCursor& place)
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

AttributeStep metadataStep(const JsonCursor& place)
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

Step attributeStep(const JsonCursor& place, const std::string& name)
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
            const auto attributes = Attributes::attributes(target.item);
            const auto attribute =
                target.edits.runFor(attributes->addAttributeCmd(type, name))->attribute();
            if (attribute->name() != name) {
                throw std::runtime_error("invalid attribute name '" + name + "'");
            }
            for (const auto& step : steps) {
                step(target, *attribute);
            }
        });
    };
}

} // namespace Kiv_v4::document
