#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "kiv/document/losslessJson.h"
#include "kiv/host/itemProperties.h"
#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"
#include "kiv/value.h"

#include "terminal/output.h"

namespace app {

namespace document = Kiv_v4::document;
namespace host = Kiv_v4::host;

using document::Json;

/// One thing known of an item.
struct Fact
{
    std::string key;   ///< In JSON.
    std::string label; ///< For people.
    Json value;
    std::string unit{};               ///< As properties have it.
    std::vector<std::string> lines{}; ///< For people, in place of value and unit.
};

/// The facts that one interface tells of an item; none when the item does not have it.
struct Section
{
    enum class Form { Record, List };

    std::string key;   ///< In JSON; empty for facts that stand by themselves.
    std::string title; ///< For people.
    std::vector<Fact> facts{};
    Form form = Form::Record; ///< In JSON: an object, or an array of the values.
};

// JSON for people and scripts, with the fewest digits that read as the same number.

[[nodiscard]] inline Json json(float number)
{
    return document::shortestJson(number);
}

/// A boolean, a number or a string, as the value's type says; null for a value without type.
[[nodiscard]] Json json(const Kiv_v4::Value& value);

[[nodiscard]] inline Json json(bool value)
{
    return value;
}
[[nodiscard]] inline Json json(int value)
{
    return value;
}
[[nodiscard]] inline Json json(double value)
{
    return value;
}
[[nodiscard]] inline Json json(const std::string& value)
{
    return value;
}

template <class T, std::size_t N>
[[nodiscard]] Json json(const std::array<T, N>& elements)
{
    auto result = Json::array();
    for (const auto& element : elements) {
        result.push_back(json(element));
    }
    return result;
}

template <class T, std::size_t N>
[[nodiscard]] Json json(const Kiv_v4::TypedVectorN<T, N>& value)
{
    return json(value.vector);
}

template <class T, std::size_t N>
[[nodiscard]] Json json(const Kiv_v4::TypedColorN<T, N>& value)
{
    return json(value.color);
}

/// An array of rows.
template <class T, std::size_t N>
[[nodiscard]] Json json(const Kiv_v4::TypedSquareMatrixN<T, N>& value)
{
    return json(value.matrix);
}

[[nodiscard]] Json json(const host::PropertyValue& value);

/// The value for people, on one line: numbers with six digits, elements of arrays behind commas.
[[nodiscard]] std::string textOf(const Json& value);

/// An array of rows for people: a line for each, in columns.
[[nodiscard]] std::vector<std::string> rowsOf(const Json& matrix);

/// Writes the sections that have facts.
void writeText(const std::vector<Section>& sections, Output& output);
void writeJson(const std::vector<Section>& sections, Output& output);

} // namespace app
