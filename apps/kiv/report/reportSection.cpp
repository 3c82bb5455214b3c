#include "report/reportSection.h"

#include <algorithm>
#include <type_traits>

#include "terminal/jsonText.h"
#include "terminal/terminal.h"

namespace app {

namespace {

/// The value with its unit.
std::string valueText(const Fact& fact)
{
    const auto unit = fact.unit.empty() ? "" : fact.unit == host::kDegrees ? "°" : " " + fact.unit;
    return textOf(fact.value) + unit;
}

std::vector<std::string> linesOf(const Fact& fact)
{
    return fact.lines.empty() ? std::vector{valueText(fact)} : fact.lines;
}

void writeFact(const Fact& fact, const std::string& indent, std::size_t width, const Paint& paint,
               Output& output)
{
    auto left = indent + paint.label(padded(printable(fact.label), width));
    for (const auto& line : linesOf(fact)) {
        output.line(left + "  " + printable(line));
        left = indent + std::string(width, ' ');
    }
}

void writeSection(const Section& section, const Paint& paint, Output& output)
{
    if (!section.title.empty()) {
        output.line("\n" + paint.title(section.title));
    }
    std::size_t width = 0;
    for (const auto& fact : section.facts) {
        width = std::max(width, columns(printable(fact.label)));
    }
    for (const auto& fact : section.facts) {
        writeFact(fact, section.title.empty() ? "" : "  ", width, paint, output);
    }
}

void addFacts(Json& record, const std::vector<Fact>& facts)
{
    for (const auto& fact : facts) {
        record[fact.key] = fact.value;
    }
}

Json listOf(const std::vector<Fact>& facts)
{
    auto list = Json::array();
    for (const auto& fact : facts) {
        list.push_back(fact.value);
    }
    return list;
}

} // namespace

Json json(const host::PropertyValue& value)
{
    return std::visit(
        []<class T>(const T& typed) {
            if constexpr (std::is_same_v<T, std::monostate>) {
                return Json();
            } else if constexpr (std::is_same_v<T, Kiv_v4::FilenameValue> ||
                                 std::is_same_v<T, Kiv_v4::EnumStringValue>) {
                return Json(typed.text);
            } else {
                return json(typed);
            }
        },
        value);
}

Json json(const Kiv_v4::Value& value)
{
    if (value.isType<bool>()) {
        return value.get<bool>();
    }
    if (value.isType<int>()) {
        return value.get<int>();
    }
    if (value.isType<float>()) {
        return json(value.get<float>());
    }
    if (value.isType<double>()) {
        return value.get<double>();
    }
    return value.isType<std::string>() ? Json(value.get<std::string>()) : Json();
}

std::string textOf(const Json& value)
{
    if (value.is_null()) {
        return "none";
    }
    if (value.is_boolean()) {
        return value.get<bool>() ? "yes" : "no";
    }
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (value.is_number_float()) {
        return host::numberText(value.get<double>());
    }
    if (!value.is_array()) {
        return value.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    std::string text;
    for (const auto& element : value) {
        text += (text.empty() ? "" : ", ") + textOf(element);
    }
    return text;
}

std::vector<std::string> rowsOf(const Json& matrix)
{
    std::size_t width = 0;
    for (const auto& row : matrix) {
        for (const auto& element : row) {
            width = std::max(width, textOf(element).size());
        }
    }
    std::vector<std::string> lines;
    for (const auto& row : matrix) {
        std::string line;
        for (const auto& element : row) {
            const auto text = textOf(element);
            line += std::string(width - text.size() + (line.empty() ? 0 : 2), ' ') + text;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

void writeText(const std::vector<Section>& sections, Output& output)
{
    const Paint paint(output.isColoured());
    for (const auto& section : sections) {
        if (!section.facts.empty()) {
            writeSection(section, paint, output);
        }
    }
}

void writeJson(const std::vector<Section>& sections, Output& output)
{
    auto record = Json::object();
    for (const auto& section : sections) {
        if (section.facts.empty()) {
            continue;
        }
        if (section.key.empty()) {
            addFacts(record, section.facts);
        } else if (section.form == Section::Form::List) {
            record[section.key] = listOf(section.facts);
        } else {
            addFacts(record[section.key], section.facts);
        }
    }
    output.line(jsonText(record, output, 2));
}

} // namespace app
