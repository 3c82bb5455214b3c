#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"
#include "kiv/value.h"

#include "facts.h"

namespace app {

// JSON from which values come back as they were, bit for bit and byte for byte, `JsonPlace` being
// the way back. (That for people and scripts is in `facts.h`.)

[[nodiscard]] Json exactJson(double number);
[[nodiscard]] Json exactJson(float number);
[[nodiscard]] Json exactJson(const std::string& text);

/// A float or double is an object of its type, since they read the same; null is no value.
[[nodiscard]] Json exactJson(const Kiv_v4::Value& value);

[[nodiscard]] inline Json exactJson(bool value)
{
    return value;
}
[[nodiscard]] inline Json exactJson(int value)
{
    return value;
}

template <class T, std::size_t N>
[[nodiscard]] Json exactJson(const std::array<T, N>& elements);

template <class Elements>
[[nodiscard]] Json exactJsonOfElements(const Elements& elements)
{
    auto result = Json::array();
    for (const auto& element : elements) {
        result.push_back(exactJson(element));
    }
    return result;
}

[[nodiscard]] inline Json exactJson(const std::vector<std::string>& texts)
{
    return exactJsonOfElements(texts);
}

template <class T, std::size_t N>
Json exactJson(const std::array<T, N>& elements)
{
    return exactJsonOfElements(elements);
}

template <class T, std::size_t N>
[[nodiscard]] Json exactJson(const Kiv_v4::TypedVectorN<T, N>& value)
{
    return exactJson(value.vector);
}

template <class T, std::size_t N>
[[nodiscard]] Json exactJson(const Kiv_v4::TypedColorN<T, N>& value)
{
    return exactJson(value.color);
}

/// An array of rows.
template <class T, std::size_t N>
[[nodiscard]] Json exactJson(const Kiv_v4::TypedSquareMatrixN<T, N>& value)
{
    return exactJson(value.matrix);
}

/// A value in a JSON document and where that is, for reading with messages that say what is wrong
/// and where: what cannot be read as it is asked for throws `std::runtime_error` with a JSON
/// pointer and the reason.
class JsonPlace
{
public:
    /// `json` must outlive the place and those made of it.
    explicit JsonPlace(const Json& json, std::string pointer = {});

    [[noreturn]] void fail(const std::string& reason) const;

    [[nodiscard]] const std::string& pointer() const noexcept { return _pointer; }

    /// The field of an object that must have it.
    [[nodiscard]] JsonPlace at(const char* key) const;

    /// The field of an object, if it has it.
    [[nodiscard]] std::optional<JsonPlace> find(const char* key) const;

    /// Fails unless it is an object with no other fields than these.
    void requireOnly(const std::vector<std::string>& keys) const;

    /// The elements of an array.
    [[nodiscard]] std::vector<JsonPlace> elements() const;

    /// The value as one of the types that `exactJson` takes.
    template <class T>
    [[nodiscard]] T as() const
    {
        T value{};
        read(value);
        return value;
    }

private:
    [[nodiscard]] JsonPlace child(const std::string& key, const Json& json) const;

    void read(bool& value) const;
    void read(int& value) const;
    void read(float& value) const;
    void read(double& value) const;
    void read(std::string& value) const;
    void read(Kiv_v4::Value& value) const;
    void read(std::vector<std::string>& texts) const;

    template <class T, std::size_t N>
    void read(std::array<T, N>& elements) const
    {
        const auto places = this->elements();
        if (places.size() != N) {
            fail("has not " + std::to_string(N) + " elements");
        }
        for (std::size_t i = 0; i < N; ++i) {
            places[i].read(elements[i]);
        }
    }
    template <class T, std::size_t N>
    void read(Kiv_v4::TypedVectorN<T, N>& value) const
    {
        read(value.vector);
    }
    template <class T, std::size_t N>
    void read(Kiv_v4::TypedColorN<T, N>& value) const
    {
        read(value.color);
    }
    template <class T, std::size_t N>
    void read(Kiv_v4::TypedSquareMatrixN<T, N>& value) const
    {
        read(value.matrix);
    }

    const Json* _json;
    std::string _pointer;
};

/// The whole document. Throws `std::runtime_error` with line, column and reason for what is no
/// JSON, and for one that is nested deeper than any that this program writes.
[[nodiscard]] Json parsedJson(const std::string& text);

} // namespace app
