#include "kiv/kit/attributeJson.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

namespace Kiv_v4::kit {

namespace {

using Json = nlohmann::json;

constexpr auto kBytes = "bytes";

[[noreturn]] void fail(const std::string& reason)
{
    throw std::invalid_argument(reason);
}

std::string hexOf(const std::string& bytes)
{
    constexpr auto digits = "0123456789abcdef";
    std::string text;
    for (const auto c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += {digits[byte >> 4], digits[byte & 15]};
    }
    return text;
}

std::string bytesOf(const std::string& hex)
{
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        unsigned char byte = 0;
        const auto* end = hex.data() + std::min(i + 2, hex.size());
        const auto* begin = hex.data() + i;
        if (end - begin != 2 || std::from_chars(begin, end, byte, 16).ptr != end) {
            fail("not hexadecimal: '" + hex + "'");
        }
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

/// Writes a value, whatever its alternative. `textOf` writes numbers, floats too, as the shortest
/// text that reads back.
struct Writer
{
    std::string operator()(std::monostate) const { return "null"; }
    std::string operator()(bool value) const { return textOf(value); }
    std::string operator()(int value) const { return textOf(value); }
    std::string operator()(float value) const { return number(value); }
    std::string operator()(double value) const { return number(value); }
    std::string operator()(const FilenameValue& value) const { return (*this)(value.text); }
    std::string operator()(const EnumStringValue& value) const { return (*this)(value.text); }

    std::string operator()(const std::string& value) const
    {
        try {
            return Json(value).dump();
        } catch (const Json::type_error&) { // not UTF-8
            return Json{{kBytes, hexOf(value)}}.dump();
        }
    }

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
            text += text.empty() ? '[' : ',';
            text += (*this)(element);
        }
        return text + "]";
    }

private:
    template <class Number>
    static std::string number(Number value)
    {
        return std::isfinite(value) ? textOf(value) : "\"" + textOf(value) + "\"";
    }
};

/// Reads a value of the requested type.
struct Reader
{
    void operator()(bool& value, const Json& json) const
    {
        if (!json.is_boolean()) {
            fail("neither true nor false: " + json.dump());
        }
        value = json.get<bool>();
    }

    void operator()(int& value, const Json& json) const
    {
        const auto isSmall = json.is_number_unsigned()
                                 ? json.get<std::uint64_t>() <= std::numeric_limits<int>::max()
                                 : json.is_number_integer() &&
                                       json.get<std::int64_t>() >= std::numeric_limits<int>::min();
        if (!isSmall) {
            fail("not an integer of 32 bits: " + json.dump());
        }
        value = json.get<int>();
    }

    void operator()(double& value, const Json& json) const
    {
        using Limits = std::numeric_limits<double>;
        for (const auto number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
            if (json == textOf(number)) {
                value = number;
                return;
            }
        }
        if (!json.is_number()) {
            fail("not a number: " + json.dump());
        }
        value = json.get<double>();
    }

    void operator()(float& value, const Json& json) const
    {
        double number = 0;
        (*this)(number, json);
        value = static_cast<float>(number);
        if (std::isinf(value) && !std::isinf(number)) {
            fail("out of range: " + json.dump());
        }
    }

    void operator()(std::string& value, const Json& json) const
    {
        if (json.is_string()) {
            value = json.get<std::string>();
        } else if (json.is_object() && json.size() == 1 && json.value(kBytes, Json()).is_string()) {
            value = bytesOf(json.at(kBytes).get<std::string>());
        } else {
            fail("not a text: " + json.dump());
        }
    }

    void operator()(FilenameValue& value, const Json& json) const { (*this)(value.text, json); }
    void operator()(EnumStringValue& value, const Json& json) const { (*this)(value.text, json); }

    template <class T, std::size_t N>
    void operator()(TypedColorN<T, N>& value, const Json& json) const
    {
        (*this)(value.color, json);
    }
    template <class T, std::size_t N>
    void operator()(TypedVectorN<T, N>& value, const Json& json) const
    {
        (*this)(value.vector, json);
    }
    template <class T, std::size_t N>
    void operator()(TypedSquareMatrixN<T, N>& value, const Json& json) const
    {
        (*this)(value.matrix, json);
    }
    template <class Element, std::size_t N>
    void operator()(std::array<Element, N>& elements, const Json& json) const
    {
        if (!json.is_array() || json.size() != N) {
            fail("expected " + std::to_string(N) + " elements");
        }
        for (std::size_t i = 0; i < N; ++i) {
            (*this)(elements[i], json[i]);
        }
    }
};

Json parsed(const std::string& json)
{
    auto parsed = Json::parse(json, nullptr, false);
    if (parsed.is_discarded()) {
        fail("not JSON: " + json);
    }
    return parsed;
}

AttributeVariant valueOf(const std::string& type, const Json& json)
{
    AttributeVariant value;
    const auto isRead = visitAttributeClass(
        type, [&]<class A, class V>(AttributeClass<A, V>) { Reader()(value.emplace<V>(), json); });
    if (!isRead && type != Attribute::kGeneric) {
        fail("unknown attribute type '" + type + "'");
    }
    return value;
}

} // namespace

std::string jsonOf(const AttributeVariant& value)
{
    return std::visit(Writer(), value);
}

AttributeVariant valueFromJson(const std::string& type, const std::string& json)
{
    return valueOf(type, parsed(json));
}

AttributeVariant valueFromJson(const std::string& json)
{
    const auto read = parsed(json);
    const auto* type = read.is_boolean()  ? Attribute::kBool
                       : read.is_number() ? Attribute::kDouble
                       : read.is_string() ? Attribute::kString
                                          : Attribute::kGeneric;
    return valueOf(type, read);
}

} // namespace Kiv_v4::kit
