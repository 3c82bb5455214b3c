#include "kiv/host/propertyValue.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace Kiv_v4::host {

namespace {

/// The class that attributes of a type are of.
template <class A>
struct AttributeClass
{
    using Value = decltype(std::declval<const A&>().get());

    const char* name;
};

/// All classes with values to reach.
constexpr auto attributeClasses()
{
    return std::tuple{AttributeClass<AttributeBool>{Attribute::kBool},
                      AttributeClass<AttributeInt>{Attribute::kInt},
                      AttributeClass<AttributeFloat>{Attribute::kFloat},
                      AttributeClass<AttributeDouble>{Attribute::kDouble},
                      AttributeClass<AttributeString>{Attribute::kString},
                      AttributeClass<AttributeFilename>{Attribute::kFilename},
                      AttributeClass<AttributeEnumString>{Attribute::kEnumString},
                      AttributeClass<AttributeColorFloat3>{Attribute::kColorFloat3},
                      AttributeClass<AttributeColorFloat4>{Attribute::kColorFloat4},
                      AttributeClass<AttributeInt3>{Attribute::kInt3},
                      AttributeClass<AttributeFloat2>{Attribute::kFloat2},
                      AttributeClass<AttributeFloat3>{Attribute::kFloat3},
                      AttributeClass<AttributeFloat4>{Attribute::kFloat4},
                      AttributeClass<AttributeDouble3>{Attribute::kDouble3},
                      AttributeClass<AttributeMatrix3d>{Attribute::kMatrix3d},
                      AttributeClass<AttributeMatrix4d>{Attribute::kMatrix4d}};
}

/// Calls `visit` with the class of the type, if there is one.
template <class Visit>
void visitClass(const std::string& type, Visit visit)
{
    std::apply(
        [&](auto... candidates) {
            (void)((type == candidates.name && (visit(candidates), true)) || ...);
        },
        attributeClasses());
}

void appendText(std::string& text, bool value)
{
    text += value ? "yes" : "no";
}
void appendText(std::string& text, int value)
{
    text += std::to_string(value);
}
void appendText(std::string& text, double value)
{
    text += numberText(value);
}
void appendText(std::string& text, const std::string& value)
{
    text += value;
}

template <class T, std::size_t N>
void appendText(std::string& text, const std::array<T, N>& elements)
{
    for (std::size_t i = 0; i < N; ++i) {
        text += i == 0 ? "" : ", ";
        appendText(text, elements[i]);
    }
}
template <class T, std::size_t N>
void appendText(std::string& text, const TypedVectorN<T, N>& value)
{
    appendText(text, value.vector);
}
template <class T, std::size_t N>
void appendText(std::string& text, const TypedColorN<T, N>& value)
{
    appendText(text, value.color);
}
template <class T, std::size_t N>
void appendText(std::string& text, const TypedSquareMatrixN<T, N>& value)
{
    appendText(text, value.matrix);
}

} // namespace

std::vector<std::string> attributeTypes()
{
    auto types =
        std::apply([](auto... classes) { return std::vector<std::string>{classes.name...}; },
                   attributeClasses());
    types.emplace_back(Attribute::kGeneric);
    return types;
}

std::optional<PropertyValue> emptyValue(const std::string& type)
{
    std::optional<PropertyValue> value;
    visitClass(type,
               [&]<class A>(AttributeClass<A>) { value = typename AttributeClass<A>::Value{}; });
    return value;
}

std::optional<PropertyValue> attributeValue(const Attribute& attribute)
{
    std::optional<PropertyValue> value;
    if (attribute.hasValue()) {
        visitClass(attribute.type(), [&]<class A>(AttributeClass<A>) {
            if (const auto* typed = dynamic_cast<const A*>(&attribute)) {
                value = typed->get();
            }
        });
    }
    return value;
}

UndoableCommand::Ptr setAttributeCmd(Attribute& attribute, const PropertyValue& value)
{
    UndoableCommand::Ptr command;
    auto fits = false;
    visitClass(attribute.type(), [&]<class A>(AttributeClass<A>) {
        auto* typed = dynamic_cast<A*>(&attribute);
        const auto* wanted = std::get_if<typename AttributeClass<A>::Value>(&value);
        if (typed && wanted) {
            command = typed->setCmd(*wanted);
            fits = true;
        }
    });
    if (!fits) {
        throw std::invalid_argument("attribute '" + attribute.name() + "' of type " +
                                    attribute.type() + " takes no such value");
    }
    return command;
}

std::string numberText(double number)
{
    std::array<char, 64> buffer;
    const auto positiveZero = number + 0.0; // of a negative one
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), positiveZero,
                                   std::chars_format::general, 6)
                         .ptr;
    return {buffer.data(), end};
}

std::string valueText(const PropertyValue& value)
{
    std::string text;
    std::visit([&text](const auto& typed) { appendText(text, typed); }, value);
    return text;
}

} // namespace Kiv_v4::host
