#include "kiv/attributeVariant.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace Kiv_v4 {

namespace {

constexpr auto kBetweenNumbers = " \t\r\n(),";

/// Writes a value, whatever its alternative.
struct Writer
{
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(int value) const { return number(value); }
    std::string operator()(float value) const { return number(value); }
    std::string operator()(double value) const { return number(value); }
    std::string operator()(const std::string& value) const { return value; }
    std::string operator()(const FilenameValue& value) const { return value.text; }
    std::string operator()(const EnumStringValue& value) const { return value.text; }

    template <class T, std::size_t N>
    std::string operator()(const TypedColorN<T, N>& value) const
    {
        return (*this)(value.color);
    }

    template <class T, std::size_t N>
    std::string operator()(const TypedVectorN<T, N>& value) const
    {
        return (*this)(value.vector);
    }

    template <class T, std::size_t N>
    std::string operator()(const TypedSquareMatrixN<T, N>& value) const
    {
        return (*this)(value.matrix);
    }

    template <class Element, std::size_t N>
    std::string operator()(const std::array<Element, N>& elements) const
    {
        std::string text;
        for (const auto& element : elements) {
            text += (text.empty() ? "(" : ", ") + (*this)(element);
        }
        return text + ")";
    }

private:
    template <class Number>
    static std::string number(Number value)
    {
        char text[32]; // the longest, of a double, has 24
        return {text, std::to_chars(std::begin(text), std::end(text), value).ptr};
    }
};

/// Reads a value of the requested type, taking words from the front of a text.
class Reader
{
public:
    explicit Reader(std::string_view text) : _text(text) {}

    void operator()(bool& value)
    {
        const auto word = next(1);
        if (word != "true" && word != "false") {
            throw std::invalid_argument("neither true nor false: '" + std::string(word) + "'");
        }
        value = word == "true";
    }

    void operator()(int& value) { number(value, 1); }
    void operator()(float& value) { number(value, 1); }
    void operator()(double& value) { number(value, 1); }

    void operator()(std::string& value) { value = std::exchange(_text, {}); }
    void operator()(FilenameValue& value) { (*this)(value.text); }
    void operator()(EnumStringValue& value) { (*this)(value.text); }

    template <class T, std::size_t N>
    void operator()(TypedColorN<T, N>& value)
    {
        elements(value.color, N);
    }

    template <class T, std::size_t N>
    void operator()(TypedVectorN<T, N>& value)
    {
        elements(value.vector, N);
    }

    template <class T, std::size_t N>
    void operator()(TypedSquareMatrixN<T, N>& value)
    {
        for (auto& row : value.matrix) {
            elements(row, N * N);
        }
    }

    /// Throws unless all of the text was read.
    void requireEnd()
    {
        if (_text.find_first_not_of(kBetweenNumbers) != std::string_view::npos) {
            wrongCount(_wanted);
        }
    }

private:
    [[noreturn]] static void wrongCount(std::size_t wanted)
    {
        throw std::invalid_argument("expected " + std::to_string(wanted) +
                                    (wanted == 1 ? " element" : " elements"));
    }

    std::string_view next(std::size_t wanted)
    {
        _wanted = wanted;
        const auto begin = _text.find_first_not_of(kBetweenNumbers);
        if (begin == std::string_view::npos) {
            wrongCount(wanted);
        }
        const auto end = std::min(_text.find_first_of(kBetweenNumbers, begin), _text.size());
        const auto word = _text.substr(begin, end - begin);
        _text.remove_prefix(end);
        return word;
    }

    template <class Number>
    void number(Number& value, std::size_t wanted)
    {
        const auto word = next(wanted);
        const auto* end = word.data() + word.size();
        const auto result = std::from_chars(word.data(), end, value);
        if (result.ec == std::errc::result_out_of_range) {
            throw std::invalid_argument("out of range: '" + std::string(word) + "'");
        }
        if (result.ec != std::errc() || result.ptr != end) {
            throw std::invalid_argument("not a number: '" + std::string(word) + "'");
        }
    }

    template <class T, std::size_t N>
    void elements(std::array<T, N>& values, std::size_t wanted)
    {
        for (auto& value : values) {
            number(value, wanted);
        }
    }

    std::string_view _text;
    std::size_t _wanted = 1;
};

} // namespace

std::vector<std::string> attributeTypes()
{
    return std::apply(
        [](auto... classes) {
            return std::vector<std::string>{classes.name..., Attribute::kGeneric};
        },
        attributeClasses());
}

std::string typeOf(const AttributeVariant& value)
{
    std::string type = Attribute::kGeneric;
    std::apply(
        [&](auto... classes) {
            const auto isOf = [&](auto candidate) {
                return std::holds_alternative<typename decltype(candidate)::Value>(value);
            };
            ((isOf(classes) && (type = classes.name, true)) || ...);
        },
        attributeClasses());
    return type;
}

std::optional<AttributeVariant> initialValue(const std::string& type)
{
    std::optional<AttributeVariant> initial;
    if (type == Attribute::kGeneric) {
        initial.emplace();
    }
    visitAttributeClass(type, [&]<class A, class V>(AttributeClass<A, V>) {
        initial.emplace(std::in_place_type<V>);
    });
    return initial;
}

AttributeVariant value(const Attribute& attribute)
{
    AttributeVariant result;
    visitAttributeClass(attribute.type(),
                        [&]<class A, class V>(AttributeClass<A, V> attributeClass) {
                            const auto* typed = dynamic_cast<const A*>(&attribute);
                            if (typed && typed->hasValue()) {
                                result.emplace<V>(attributeClass.wrapped(typed->get()));
                            }
                        });
    return result;
}

UndoableCommand::Ptr setValueCmd(Attribute& attribute, const AttributeVariant& value)
{
    UndoableCommand::Ptr command;
    auto fits = false;
    visitAttribute(attribute, [&]<class A, class V>(A& typed, AttributeClass<A, V> attributeClass) {
        if (const auto* own = std::get_if<V>(&value)) {
            fits = true;
            command = typed.setCmd(attributeClass.unwrapped(*own));
        }
    });
    if (!fits) {
        throw std::invalid_argument("attribute '" + attribute.name() + "' is of type " +
                                    attribute.type() + ", the value of type " + typeOf(value));
    }
    return command;
}

std::string textOf(const AttributeVariant& value)
{
    return std::visit(Writer(), value);
}

AttributeVariant valueFromText(const std::string& type, const std::string& text)
{
    AttributeVariant value;
    const auto isRead = visitAttributeClass(type, [&]<class A, class V>(AttributeClass<A, V>) {
        Reader reader(text);
        reader(value.emplace<V>());
        reader.requireEnd();
    });
    if (!isRead && type != Attribute::kGeneric) {
        throw std::invalid_argument("unknown attribute type '" + type + "'");
    }
    return value;
}

} // namespace Kiv_v4
