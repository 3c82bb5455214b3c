#include <optional>

#include "observers.h"
#include "overrides.h"
#include "values.h"

namespace bound {

namespace {

using kiv::Attribute;
using kiv::Attributes;
using kiv::SceneItem;

class PyDef : public Derivable<kiv::AttributeDef>
{
public:
    using Derivable::Derivable;
    KIV_PURE_NOUN(std::string, name)
    KIV_PURE_NOUN(std::string, displayName)
    KIV_PURE_NOUN(std::string, type)
    KIV_PURE_NOUN(std::string, defaultValue)
    KIV_PURE_NOUN(std::vector<std::string>, enumValues)
    KIV_PURE_CONST_METHOD(kiv::Value, metadata, (const std::string& key), (key))
};

class PyHandler : public Derivable<kiv::AttributesHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(Attributes::Ptr, attributes, (const SceneItem::Ptr& item), (item))
};

void setValue(Attribute& attribute, nb::handle value)
{
    const auto converted = cppValue(value, attribute.type());
    kiv::visitAttribute(attribute, [&](auto& typed, auto attributeClass) {
        using Type = decltype(attributeClass);
        typed.set(Type::unwrapped(std::get<typename Type::Value>(converted)));
    });
}

void bindAttribute(nb::module_& module)
{
    Class<Attribute> type(module, "Attribute");
    type.constant("kInvalid", Attribute::kInvalid).constant("kBool", Attribute::kBool);
    type.constant("kInt", Attribute::kInt).constant("kFloat", Attribute::kFloat);
    type.constant("kDouble", Attribute::kDouble).constant("kString", Attribute::kString);
    type.constant("kColorFloat3", Attribute::kColorFloat3);
    type.constant("kColorFloat4", Attribute::kColorFloat4);
    type.constant("kFilename", Attribute::kFilename)
        .constant("kEnumString", Attribute::kEnumString);
    type.constant("kInt3", Attribute::kInt3).constant("kFloat2", Attribute::kFloat2);
    type.constant("kFloat3", Attribute::kFloat3).constant("kFloat4", Attribute::kFloat4);
    type.constant("kDouble3", Attribute::kDouble3).constant("kMatrix3d", Attribute::kMatrix3d);
    type.constant("kMatrix4d", Attribute::kMatrix4d).constant("kGeneric", Attribute::kGeneric);
    type.constant("kLocked", Attribute::kLocked);
    type.property("hasValue", &Attribute::hasValue);
    type.property("name", &Attribute::name);
    type.property("displayName", &Attribute::displayName);
    type.property("type", &Attribute::type);
    type.property("string", &Attribute::string);
    type.property("sceneItem", &Attribute::sceneItem);
    type.method(
        "metadata",
        [](const Attribute& self, const std::string& key) {
            return pythonValue(self.metadata(key));
        },
        "key"_a);
    type.method("setMetadata", &Attribute::setMetadata, "key"_a, "value"_a);
    type.method("setMetadataCmd", &Attribute::setMetadataCmd, "key"_a, "value"_a);
    type.method("clearMetadata", &Attribute::clearMetadata, "key"_a);
    type.method("hasMetadata", &Attribute::hasMetadata, "key"_a);
    type.def_prop_rw(
        "value", [](const Attribute& self) { return pythonValue(kiv::value(self)); }, &setValue,
        "The value as plain Python, whatever the type of the attribute; None when it has none. "
        "Assigning sets it "
        "at once, without a command; `set_cmd` makes one. Raises `TypeError` for a value of "
        "another type.",
        nb::for_getter(nb::sig("def value(self) -> typing.Any")),
        nb::for_setter(nb::sig("def value(self, value: typing.Any, /) -> None")));
    type.def(
        "set_cmd",
        [](Attribute& self, nb::handle value) {
            return kiv::setValueCmd(self, cppValue(value, self.type()));
        },
        "value"_a, contract("setValueCmd"));
    type.def("__str__", &Attribute::string);
    type.def(
        "__eq__", [](const Attribute& self, const Attribute& other) { return self == other; },
        nb::is_operator());
    type.def("__hash__", [](const Attribute& self) {
        return nb::hash(nb::make_tuple(self.sceneItem()->path(), self.name()));
    });
    type.def("__repr__", [](nb::handle self) {
        auto* const attribute = nb::inst_ptr<Attribute>(self);
        return nb::str("<{} {!r} of {!r}: {}>")
            .format(self.type().attr("__name__"), attribute->name(),
                    nb::str(nb::cast(attribute->sceneItem()->path())), attribute->string());
    });
}

/// The class for one type of values.
template <class T>
void bindTyped(nb::module_& module, const char* name, const char* key)
{
    using Get = std::decay_t<decltype(std::declval<const T&>().get())>;
    nb::class_<T, Attribute> type(module, name, contract(key));
    const auto members = std::string(key) + "::";
    type.def_prop_rw(
        "value", [](const T& self) { return self.get(); },
        [](T& self, const Get& value) { self.set(value); }, contract(members + "get"));
    type.def("set_cmd", &T::setCmd, "value"_a, contract(members + "setCmd"));
    if constexpr (std::is_same_v<T, kiv::AttributeEnumString>) {
        type.def_prop_ro("enum_values", &T::enumValues,
                         contract("AttributeEnumString::enumValues"));
    }
}

void bindTypedAttributes(nb::module_& module)
{
    constexpr auto key = "TypedAttribute";
    bindTyped<kiv::AttributeBool>(module, "AttributeBool", key);
    bindTyped<kiv::AttributeInt>(module, "AttributeInt", key);
    bindTyped<kiv::AttributeFloat>(module, "AttributeFloat", key);
    bindTyped<kiv::AttributeDouble>(module, "AttributeDouble", key);
    bindTyped<kiv::AttributeString>(module, "AttributeString", key);
    bindTyped<kiv::AttributeColorFloat3>(module, "AttributeColorFloat3", key);
    bindTyped<kiv::AttributeColorFloat4>(module, "AttributeColorFloat4", key);
    bindTyped<kiv::AttributeInt3>(module, "AttributeInt3", key);
    bindTyped<kiv::AttributeFloat2>(module, "AttributeFloat2", key);
    bindTyped<kiv::AttributeFloat3>(module, "AttributeFloat3", key);
    bindTyped<kiv::AttributeFloat4>(module, "AttributeFloat4", key);
    bindTyped<kiv::AttributeDouble3>(module, "AttributeDouble3", key);
    bindTyped<kiv::AttributeMatrix3d>(module, "AttributeMatrix3d", key);
    bindTyped<kiv::AttributeMatrix4d>(module, "AttributeMatrix4d", key);
    bindTyped<kiv::AttributeFilename>(module, "AttributeFilename", "AttributeFilename");
    bindTyped<kiv::AttributeEnumString>(module, "AttributeEnumString", "AttributeEnumString");
    Class<kiv::AttributeGeneric, Attribute> generic(module, "AttributeGeneric");
    generic.property("nativeType", &kiv::AttributeGeneric::nativeType);
}

void bindDefinition(nb::module_& module)
{
    using kiv::AttributeDef;
    Class<AttributeDef, PyDef> type(module, "AttributeDef");
    type.def(nb::init<>());
    type.property("name", &AttributeDef::name);
    type.property("displayName", &AttributeDef::displayName);
    type.property("type", &AttributeDef::type);
    type.property("defaultValue", &AttributeDef::defaultValue);
    type.property("enumValues", &AttributeDef::enumValues);
    type.method(
        "metadata",
        [](const AttributeDef& self, const std::string& key) {
            return pythonValue(self.metadata(key));
        },
        "key"_a);

    using kiv::AttributeInfo;
    Class<AttributeInfo> info(module, "AttributeInfo");
    info.def(nb::init<const kiv::Path&, const std::string&>(), "path"_a, "name"_a);
    info.def(nb::init<const Attribute::Ptr&>(), "attribute"_a);
    info.property("path", [](const AttributeInfo& self) { return self.path(); });
    info.property("name", &AttributeInfo::name);
    info.property("attribute", &AttributeInfo::attribute);
    info.def(
        "__eq__",
        [](const AttributeInfo& self, const AttributeInfo& other) { return self == other; },
        nb::is_operator());
    info.def("__hash__", [](const AttributeInfo& self) {
        return nb::hash(nb::make_tuple(self.path(), self.name()));
    });
    info.def("__repr__", [](const AttributeInfo& self) {
        return nb::str("AttributeInfo({!r}, {!r})")
            .format(nb::str(nb::cast(self.path())), self.name());
    });
}

void bindAttributeSets(nb::module_& module)
{
    Class<Attributes> type(module, "Attributes");
    type.def_static("of", &Attributes::attributes, "item"_a, contract("Attributes::attributes"));
    type.property("sceneItem", &Attributes::sceneItem);
    type.method("attributeType", &Attributes::attributeType, "name"_a);
    type.method("attribute", &Attributes::attribute, "name"_a);
    type.property("attributeNames", &Attributes::attributeNames);
    type.method("hasAttribute", &Attributes::hasAttribute, "name"_a);
    type.method("addAttribute", &Attributes::addAttribute, "type"_a, "name"_a);
    type.method("addAttributeCmd", &Attributes::addAttributeCmd, "type"_a, "name"_a);
    type.method("removeAttribute", &Attributes::removeAttribute, "name"_a);
    type.method("removeAttributeCmd", &Attributes::removeAttributeCmd, "name"_a);
    type.method("renameAttribute", &Attributes::renameAttribute, "name"_a, "new_name"_a);
    type.method("renameAttributeCmd", &Attributes::renameAttributeCmd, "name"_a, "new_name"_a);
    type.def("__len__", [](const Attributes& self) { return self.attributeNames().size(); });
    type.def("__contains__", &Attributes::hasAttribute);
    type.def("__iter__",
             [](const Attributes& self) { return nb::iter(nb::cast(self.attributeNames())); });
    type.def(
        "__getitem__",
        [](Attributes& self, const std::string& name) {
            auto attribute = self.hasAttribute(name) ? self.attribute(name) : nullptr;
            if (!attribute) {
                throw nb::key_error(name.c_str());
            }
            return attribute;
        },
        "name"_a);
    bindItemObservers<Attributes>(type);
    bindGlobalObservers<Attributes>(type);
    type.function("notify", &Attributes::notify, "notification"_a);

    Class<kiv::Attributes_v4_2, Attributes> newer(module, "Attributes_v4_2");
    newer.method("attributeDef", &kiv::Attributes_v4_2::attributeDef, "name"_a);

    Class<kiv::AttributesHandler, PyHandler> handler(module, "AttributesHandler");
    handler.def(nb::init<>());
    handler.method("attributes", &kiv::AttributesHandler::attributes, "item"_a);
}

void bindValueFunctions(nb::module_& module)
{
    function(module, "", "attributeTypes", &kiv::attributeTypes);
    function(
        module, "", "initialValue",
        [](const std::string& type) {
            return pythonValue(kiv::initialValue(type).value_or(kiv::AttributeVariant()));
        },
        "type"_a);
    function(
        module, "", "textOf",
        [](const std::string& type, nb::handle value) {
            return kiv::textOf(cppValue(value, type));
        },
        "type"_a, "value"_a);
    function(
        module, "", "valueFromText",
        [](const std::string& type, const std::string& text) {
            return pythonValue(kiv::valueFromText(type, text));
        },
        "type"_a, "text"_a);
}

} // namespace

void bindAttributes(nb::module_& module)
{
    bindAttribute(module);
    bindTypedAttributes(module);
    bindDefinition(module);
    bindAttributeSets(module);
    bindValueFunctions(module);
}

} // namespace bound
