#include "exactJson.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

#include "terminal.h"

namespace app {

using Kiv_v4::Value;

namespace {

constexpr auto kBytes = "bytes";
constexpr auto kFloat = "float";
constexpr auto kDouble = "double";
constexpr auto kDeepest = 16;

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

/// The bytes that `hex` writes; none when it is no such text.
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
    std::from_chars(text.data(), text.data() + text.size(), number); // infinities as well
    return number;
}

std::string spelled(double number)
{
    return std::isnan(number) ? "nan" : number > 0 ? "inf" : "-inf";
}

/// In `~` and `/`, which mean something in a pointer.
std::string escaped(const std::string& key)
{
    std::string text;
    for (const auto c : key) {
        text += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    }
    return text;
}

/// What is wrong, without the library's own words in front.
std::string reasonOf(const Json::exception& error)
{
    const std::string text = error.what();
    const auto line = text.find("line ");
    const auto behindTag = text.find("] ");
    return line != std::string::npos        ? text.substr(line)
           : behindTag != std::string::npos ? text.substr(behindTag + 2)
                                            : text;
}

} // namespace

Json exactJson(double number)
{
    return std::isfinite(number) ? Json(number) : Json(spelled(number));
}

Json exactJson(float number)
{
    if (!std::isfinite(number)) {
        return spelled(number);
    }
    auto shortest = json(number);
    return static_cast<float>(shortest.get<double>()) == number ? shortest : Json(double{number});
}

Json exactJson(const std::string& text)
{
    return isUtf8(text) ? Json(text) : Json{{kBytes, hexOf(text)}};
}

Json exactJson(const Value& value)
{
    if (value.isType<float>()) {
        return {{kFloat, exactJson(numberIn<float>(value))}};
    }
    if (value.isType<double>()) {
        return {{kDouble, exactJson(numberIn<double>(value))}};
    }
    return value.isType<std::string>() ? exactJson(value.get<std::string>()) : json(Value(value));
}

JsonPlace::JsonPlace(const Json& json, std::string pointer)
    : _json(&json), _pointer(std::move(pointer))
{}

void JsonPlace::fail(const std::string& reason) const
{
    throw std::runtime_error(_pointer.empty() ? reason : _pointer + ": " + reason);
}

JsonPlace JsonPlace::at(const char* key) const
{
    const auto found = find(key);
    if (!found) {
        fail("has no '" + std::string(key) + "'");
    }
    return *found;
}

std::optional<JsonPlace> JsonPlace::find(const char* key) const
{
    if (!_json->is_object()) {
        fail("is no object");
    }
    const auto found = _json->find(key);
    return found == _json->end() ? std::nullopt : std::optional(child(key, *found));
}

void JsonPlace::requireOnly(const std::vector<std::string>& keys) const
{
    if (!_json->is_object()) {
        fail("is no object");
    }
    for (const auto& [key, value] : _json->items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
            child(key, value).fail("is no field that this program knows");
        }
    }
}

std::vector<JsonPlace> JsonPlace::elements() const
{
    if (!_json->is_array()) {
        fail("is no array");
    }
    std::vector<JsonPlace> places;
    places.reserve(_json->size());
    for (const auto& element : *_json) {
        places.push_back(child(std::to_string(places.size()), element));
    }
    return places;
}

JsonPlace JsonPlace::child(const std::string& key, const Json& json) const
{
    return JsonPlace(json, _pointer + "/" + escaped(key));
}

void JsonPlace::read(bool& value) const
{
    if (!_json->is_boolean()) {
        fail("is neither true nor false");
    }
    value = _json->get<bool>();
}

void JsonPlace::read(int& value) const
{
    const auto isSmall = _json->is_number_unsigned()
                             ? _json->get<std::uint64_t>() <= std::numeric_limits<int>::max()
                             : _json->is_number_integer() &&
                                   _json->get<std::int64_t>() >= std::numeric_limits<int>::min();
    if (!isSmall) {
        fail("is no integer of 32 bits");
    }
    value = _json->get<int>();
}

void JsonPlace::read(double& value) const
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
    fail("is no number");
}

void JsonPlace::read(float& value) const
{
    const auto number = as<double>();
    value = static_cast<float>(number);
    if (std::isinf(value) && !std::isinf(number)) {
        fail("is too large");
    }
}

void JsonPlace::read(std::string& value) const
{
    if (_json->is_string()) {
        value = _json->get<std::string>();
        return;
    }
    if (!_json->is_object()) {
        fail("is no text");
    }
    requireOnly({kBytes});
    const auto hex = at(kBytes);
    const auto bytes = bytesOf(hex.as<std::string>());
    if (!bytes) {
        hex.fail("is no hexadecimal text");
    }
    value = *bytes;
}

void JsonPlace::read(Value& value) const
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

void JsonPlace::read(std::vector<std::string>& texts) const
{
    for (const auto& element : elements()) {
        texts.push_back(element.as<std::string>());
    }
}

Json parsedJson(const std::string& text)
{
    const auto limited = [](int depth, Json::parse_event_t, const Json&) {
        if (depth > kDeepest) {
            throw std::runtime_error("is nested deeper than " + std::to_string(kDeepest) +
                                     " levels");
        }
        return true;
    };
    try {
        return Json::parse(text, limited);
    } catch (const Json::exception& error) {
        throw std::runtime_error(reasonOf(error));
    }
}

} // namespace app
