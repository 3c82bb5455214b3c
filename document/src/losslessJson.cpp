#include "kiv/document/losslessJson.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

#include "kiv/host/utf8.h"

namespace Kiv_v4::document {

namespace {

constexpr auto kBytes = "bytes";
constexpr auto kFloat = "float";
constexpr auto kDouble = "double";
constexpr std::size_t kDeepest = 16;
constexpr std::size_t kMostFields = 100; // an object finds its fields one by one

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

/// The bytes that `hex` writes; `std::nullopt` if it is not such a text.
std::optional<std::string> bytesOf(const std::string& hex)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        unsigned char byte = 0;
        const auto* end = hex.data() + i + 2;
        if (std::from_chars(end - 2, end, byte, 16).ptr != end) {
            return std::nullopt;
        }
        bytes += static_cast<char>(byte);
    }
    return hex.size() % 2 == 0 ? std::optional(bytes) : std::nullopt;
}

/// The number that the value was made of, to the six digits that values keep.
template <class Number>
Number numberIn(const Value& value)
{
    const auto text = value.get<std::string>();
    Number number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number); // infinity as well
    return number;
}

std::string spelled(double number)
{
    return std::isnan(number) ? "nan" : number > 0 ? "inf" : "-inf";
}

/// Escapes `~` and `/`, which have a meaning in a pointer.
std::string escaped(const std::string& key)
{
    std::string text;
    for (const auto c : key) {
        text += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    }
    return text;
}

/// The parser's message without its prefix.
std::string reasonOf(const Json::exception& error)
{
    const std::string text = error.what();
    const auto line = text.find("line ");
    const auto behindTag = text.find("] ");
    return line != std::string::npos        ? text.substr(line)
           : behindTag != std::string::npos ? text.substr(behindTag + 2)
                                            : text;
}

/// The number of bytes of the string, quotes included, that `text` begins with.
std::size_t stringLength(std::string_view text)
{
    std::size_t end = 1;
    while (end < text.size() && text[end] != '"') {
        end += text[end] == '\\' ? 2 : 1;
    }
    return std::min(end + 1, text.size());
}

/// Fails for text whose cost would not be linear: deeply nested structures, or objects with very
/// many fields. The parser checks whether the text is JSON at all.
void requireShape(std::string_view text)
{
    std::array<std::size_t, kDeepest + 2> nbFields{}; // of the objects that are open
    std::size_t depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        switch (text[at]) {
        case '"':
            at += stringLength(text.substr(at)) - 1;
            break;
        case '[':
        case '{':
            if (++depth > kDeepest + 1) {
                throw std::runtime_error("is nested deeper than " + std::to_string(kDeepest) +
                                         " levels");
            }
            nbFields[depth] = 0;
            break;
        case ']':
        case '}':
            depth -= depth > 0 ? 1 : 0;
            break;
        case ':':
            if (++nbFields[depth] > kMostFields) {
                throw std::runtime_error("has an object of more than " +
                                         std::to_string(kMostFields) + " fields");
            }
            break;
        default:
            break;
        }
    }
}

} // namespace

Json shortestJson(float number)
{
    std::array<char, 64> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    double result = 0;
    std::from_chars(buffer.data(), end, result);
    return result;
}

Json losslessJson(double number)
{
    return std::isfinite(number) ? Json(number) : Json(spelled(number));
}

Json losslessJson(float number)
{
    if (!std::isfinite(number)) {
        return spelled(number);
    }
    auto shortest = shortestJson(number);
    return static_cast<float>(shortest.get<double>()) == number ? shortest : Json(double{number});
}

Json losslessJson(const std::string& text)
{
    return host::isUtf8(text) ? Json(text) : Json{{kBytes, hexOf(text)}};
}

Json losslessJson(const Value& value)
{
    if (value.isType<float>()) {
        return {{kFloat, losslessJson(numberIn<float>(value))}};
    }
    if (value.isType<double>()) {
        return {{kDouble, losslessJson(numberIn<double>(value))}};
    }
    if (value.isType<bool>()) {
        return value.get<bool>();
    }
    if (value.isType<int>()) {
        return value.get<int>();
    }
    return value.isType<std::string>() ? losslessJson(value.get<std::string>()) : Json();
}

Json losslessJson(const host::PropertyValue& value)
{
    return std::visit(
        []<class T>(const T& typed) {
            if constexpr (std::is_same_v<T, std::monostate>) {
                return Json();
            } else {
                return losslessJson(typed);
            }
        },
        value);
}

JsonCursor::JsonCursor(const Json& json, std::string pointer)
    : _json(&json), _pointer(std::move(pointer))
{}

void JsonCursor::fail(const std::string& reason) const
{
    throw std::runtime_error(_pointer.empty() ? reason : _pointer + ": " + reason);
}

JsonCursor JsonCursor::at(const char* key) const
{
    const auto found = find(key);
    if (!found) {
        fail("missing field '" + std::string(key) + "'");
    }
    return *found;
}

std::optional<JsonCursor> JsonCursor::find(const char* key) const
{
    if (!_json->is_object()) {
        fail("expected an object");
    }
    const auto found = _json->find(key);
    return found == _json->end() ? std::nullopt : std::optional(child(key, *found));
}

std::vector<std::pair<std::string, JsonCursor>> JsonCursor::fields() const
{
    if (!_json->is_object()) {
        fail("expected an object");
    }
    std::vector<std::pair<std::string, JsonCursor>> cursors;
    for (const auto& [key, value] : _json->items()) {
        cursors.emplace_back(key, child(key, value));
    }
    return cursors;
}

void JsonCursor::requireOnly(const std::vector<std::string>& keys) const
{
    for (const auto& [key, field] : fields()) {
        if (std::ranges::find(keys, key) == keys.end()) {
            field.fail("unknown field");
        }
    }
}

std::vector<JsonCursor> JsonCursor::elements() const
{
    if (!_json->is_array()) {
        fail("expected an array");
    }
    std::vector<JsonCursor> places;
    places.reserve(_json->size());
    for (const auto& element : *_json) {
        places.push_back(child(std::to_string(places.size()), element));
    }
    return places;
}

JsonCursor JsonCursor::child(const std::string& key, const Json& json) const
{
    return JsonCursor(json, _pointer + "/" + escaped(key));
}

host::PropertyValue JsonCursor::as(const host::PropertyValue& kind) const
{
    return std::visit(
        [this]<class T>(const T&) -> host::PropertyValue {
            if constexpr (std::is_same_v<T, std::monostate>) {
                fail("expected a type with values");
            } else {
                return as<T>();
            }
        },
        kind);
}

void JsonCursor::read(bool& value) const
{
    if (!_json->is_boolean()) {
        fail("expected true or false");
    }
    value = _json->get<bool>();
}

void JsonCursor::read(int& value) const
{
    const auto isSmall = _json->is_number_unsigned()
                             ? _json->get<std::uint64_t>() <= std::numeric_limits<int>::max()
                             : _json->is_number_integer() &&
                                   _json->get<std::int64_t>() >= std::numeric_limits<int>::min();
    if (!isSmall) {
        fail("expected an integer of 32 bits");
    }
    value = _json->get<int>();
}

void JsonCursor::read(double& value) const
{
    if (_json->is_number()) {
        value = _json->get<double>();
        return;
    }
    using Limits = std::numeric_limits<double>;
    for (const auto number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        if (*_json == spelled(number)) {
            value = number;
            return;
        }
    }
    fail("expected a number");
}

void JsonCursor::read(float& value) const
{
    const auto number = as<double>();
    value = static_cast<float>(number);
    if (std::isinf(value) && !std::isinf(number)) {
        fail("out of range");
    }
}

void JsonCursor::read(std::string& value) const
{
    if (_json->is_string()) {
        value = _json->get<std::string>();
        return;
    }
    if (!_json->is_object()) {
        fail("expected a text");
    }
    requireOnly({kBytes});
    const auto hex = at(kBytes);
    const auto bytes = bytesOf(hex.as<std::string>());
    if (!bytes) {
        hex.fail("expected hexadecimal digits");
    }
    value = *bytes;
}

void JsonCursor::read(Value& value) const
{
    if (_json->is_null()) {
        value = Value();
    } else if (_json->is_boolean()) {
        value = Value(as<bool>());
    } else if (_json->is_number()) {
        value = Value(as<int>());
    } else if (_json->is_object() && !_json->contains(kBytes)) {
        requireOnly({kFloat, kDouble});
        const auto single = find(kFloat);
        value = single ? Value(single->as<float>()) : Value(at(kDouble).as<double>());
    } else {
        value = Value(as<std::string>());
    }
}

void JsonCursor::read(std::vector<std::string>& texts) const
{
    for (const auto& element : elements()) {
        texts.push_back(element.as<std::string>());
    }
}

Json parseJson(const std::string& text)
{
    requireShape(text);
    try {
        return Json::parse(text);
    } catch (const Json::exception& error) {
        throw std::runtime_error(reasonOf(error));
    }
}

} // namespace Kiv_v4::document
