#pragma once

#include <array>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "kiv/export.h"
#include "kiv/host/propertyValue.h"
#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"
#include "kiv/value.h"

namespace Kiv_v4::document {

// JSON that restores values bit for bit and byte for byte; `JsonCursor` reads it. To include this
// header, you need the headers of nlohmann-json 3.

/// JSON whose objects keep the order of their fields.
using Json = nlohmann::ordered_json;

/// Returns the number with the fewest digits that reads back as that `float`, instead of the digits
/// of its `double`. NaN and infinity become null when the JSON is written.
[[nodiscard]] KIV_EXPORT Json shortestJson(float number);

/// Returns the number; infinity and NaN are the texts "inf", "-inf" and "nan".
[[nodiscard]] KIV_EXPORT Json losslessJson(double number);
[[nodiscard]] KIV_EXPORT Json losslessJson(float number);

/// Returns the text; text that is not UTF-8 is an object with its bytes as hexadecimal text:
/// {"bytes": "6bc3"}.
[[nodiscard]] KIV_EXPORT Json losslessJson(const std::string& text);

/// Returns the value; a float or double is an object of its type, since both read the same; no
/// value is null.
[[nodiscard]] KIV_EXPORT Json losslessJson(const Value& value);

/// Returns the JSON of its text.
[[nodiscard]] inline Json losslessJson(const FilenameValue& value)
{
    return losslessJson(value.text);
}
/// Returns the JSON of its text.
[[nodiscard]] inline Json losslessJson(const EnumStringValue& value)
{
    return losslessJson(value.text);
}

/// Returns the JSON of the contained value; null if there is none.
[[nodiscard]] KIV_EXPORT Json losslessJson(const host::PropertyValue& value);

/// Returns `true` or `false`.
[[nodiscard]] inline Json losslessJson(bool value)
{
    return value;
}
/// Returns the number.
[[nodiscard]] inline Json losslessJson(int value)
{
    return value;
}
/// Returns an array of the elements.

template <class T, std::size_t N>
[[nodiscard]] Json losslessJson(const std::array<T, N>& elements);

/// Returns an array of the elements of any container.
template <class Elements>
[[nodiscard]] Json losslessElements(const Elements& elements)
{
    auto result = Json::array();
    for (const auto& element : elements) {
        result.push_back(losslessJson(element));
    }
    return result;
}

/// Returns an array of the texts.
[[nodiscard]] inline Json losslessJson(const std::vector<std::string>& texts)
{
    return losslessElements(texts);
}

template <class T, std::size_t N>
Json losslessJson(const std::array<T, N>& elements)
{
    return losslessElements(elements);
}

/// Returns an array of the elements.
template <class T, std::size_t N>
[[nodiscard]] Json losslessJson(const TypedVectorN<T, N>& value)
{
    return losslessJson(value.vector);
}

/// Returns an array of the components.
template <class T, std::size_t N>
[[nodiscard]] Json losslessJson(const TypedColorN<T, N>& value)
{
    return losslessJson(value.color);
}

/// Returns an array of rows.
template <class T, std::size_t N>
[[nodiscard]] Json losslessJson(const TypedSquareMatrixN<T, N>& value)
{
    return losslessJson(value.matrix);
}

/// A value in a JSON document and its place, for reading with exact messages: a value that cannot
/// be read as requested throws `std::runtime_error` with a JSON pointer and the reason.
class KIV_EXPORT JsonCursor
{
public:
    /// `json` must outlive the cursor and those made from it.
    explicit JsonCursor(const Json& json, std::string pointer = {});

    /// Throws `std::runtime_error` with the place and the reason.
    [[noreturn]] void fail(const std::string& reason) const;

    /// Returns the place of the cursor, as a JSON pointer.
    [[nodiscard]] const std::string& pointer() const noexcept { return _pointer; }

    /// Returns the field of an object, which must have it.
    [[nodiscard]] JsonCursor at(const char* key) const;

    /// Returns the field of an object, if it has it.
    [[nodiscard]] std::optional<JsonCursor> find(const char* key) const;

    /// Returns the fields of an object, in its order.
    [[nodiscard]] std::vector<std::pair<std::string, JsonCursor>> fields() const;

    /// Fails unless the value is an object whose only fields are `keys`.
    void requireOnly(const std::vector<std::string>& keys) const;

    /// Returns the elements of an array.
    [[nodiscard]] std::vector<JsonCursor> elements() const;

    /// Returns the value as one of the types that `losslessJson` takes. Fails if it is of another
    /// type.
    template <class T>
    [[nodiscard]] T as() const
    {
        T value{};
        read(value);
        return value;
    }

    /// Returns the value as the type that `kind` contains; `kind` must contain a value.
    [[nodiscard]] host::PropertyValue as(const host::PropertyValue& kind) const;

private:
    [[nodiscard]] JsonCursor child(const std::string& key, const Json& json) const;

    void read(bool& value) const;
    void read(int& value) const;
    void read(float& value) const;
    void read(double& value) const;
    void read(std::string& value) const;
    void read(FilenameValue& value) const { read(value.text); }
    void read(EnumStringValue& value) const { read(value.text); }
    void read(Value& value) const;
    void read(std::vector<std::string>& texts) const;

    template <class T, std::size_t N>
    void read(std::array<T, N>& elements) const
    {
        const auto places = this->elements();
        if (places.size() != N) {
            fail("expected " + std::to_string(N) + " elements");
        }
        for (std::size_t i = 0; i < N; ++i) {
            places[i].read(elements[i]);
        }
    }
    template <class T, std::size_t N>
    void read(TypedVectorN<T, N>& value) const
    {
        read(value.vector);
    }
    template <class T, std::size_t N>
    void read(TypedColorN<T, N>& value) const
    {
        read(value.color);
    }
    template <class T, std::size_t N>
    void read(TypedSquareMatrixN<T, N>& value) const
    {
        read(value.matrix);
    }

    const Json* _json;
    std::string _pointer;
};

/// Returns the whole document. Throws `std::runtime_error` with line, column and reason if the text
/// is not JSON or is nested deeper than any scene document.
///
/// Cost: linear in the text.
[[nodiscard]] KIV_EXPORT Json parseJson(const std::string& text);

} // namespace Kiv_v4::document
