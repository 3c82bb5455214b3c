#include <array>

#include "report/fileInfo.h"
#include "report/table.h"
#include "terminal/jsonText.h"

namespace app {

namespace {

/// A number or text that is told of each file, and its place in tables.
struct Column
{
    const char* key;
    const char* title; ///< In tables on the terminal; null where it is left out.
    bool isSummed = false;
};

constexpr Column kColumns[] = {
    {"file", "file"},
    {"format", nullptr},
    {"formatVersion", nullptr},
    {"generator", nullptr},
    {"author", nullptr},
    {"unit", nullptr},
    {"sceneUnit", nullptr},
    {"upAxis", nullptr},
    {"items", "items", true},
    {"depth", "depth"},
    {"breadth", nullptr},
    {"meshes", "meshes", true},
    {"vertices", "vertices", true},
    {"faces", "faces", true},
    {"uvSets", "uv sets"},
    {"bones", "bones", true},
    {"materials", "materials", true},
    {"textures", "textures", true},
    {"missingTextures", "missing", true},
    {"embeddedTextures", nullptr, true},
    {"animations", "animations", true},
    {"animationSeconds", nullptr, true},
    {"seconds", "read, s", true},
};

Json totalsOf(const std::vector<Json>& files)
{
    Json totals{{"file", "total"}, {"files", files.size()}};
    for (const auto& column : kColumns) {
        if (!column.isSummed) {
            continue;
        }
        auto isWhole = true;
        double sum = 0;
        for (const auto& file : files) {
            const auto value = file.value(column.key, Json(0));
            isWhole = isWhole && value.is_number_integer();
            sum += value.get<double>();
        }
        totals[column.key] = isWhole ? Json(static_cast<std::uint64_t>(sum)) : Json(sum);
    }
    return totals;
}

std::string cell(const Json& file, const Column& column)
{
    const auto found = file.find(column.key);
    return found == file.end() || found->is_null() ? "" : textOf(*found);
}

void writeTable(std::vector<Json> files, Output& output)
{
    std::vector<Table::Column> columns;
    for (const auto& column : kColumns) {
        if (column.title) {
            columns.push_back({column.title, std::string_view(column.key) != "file"});
        }
    }
    Table table(std::move(columns));
    files.push_back(totalsOf(files));
    for (const auto& file : files) {
        std::vector<std::string> row;
        for (const auto& column : kColumns) {
            if (column.title) {
                row.push_back(cell(file, column));
            }
        }
        table.add(std::move(row));
    }
    table.write(output);
}

std::string csvQuoted(const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == text.npos) {
        return text;
    }
    std::string result = "\"";
    for (const auto c : text) {
        result += c == '"' ? "\"\"" : std::string(1, c);
    }
    return result + '"';
}

void writeCsv(std::vector<Json> files, Output& output)
{
    std::string titles;
    for (const auto& column : kColumns) {
        titles += (titles.empty() ? "" : ",") + std::string(column.key);
    }
    output.line(titles + ",sizeX,sizeY,sizeZ");
    files.push_back(totalsOf(files));
    for (const auto& file : files) {
        std::string line;
        for (const auto& column : kColumns) {
            const auto found = file.find(column.key);
            const auto isText = found != file.end() && found->is_string();
            const auto text = found == file.end() ? ""
                              : isText            ? found->get<std::string>()
                                                  : found->dump(); // all digits of numbers
            line += (line.empty() ? "" : ",") + csvQuoted(text);
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const auto size = file.find("size");
            line += "," + (size == file.end() || size->is_null() ? "" : (*size)[i].dump());
        }
        output.line(line);
    }
}

/// The fact of that key if there is something to tell.
void addFact(Section& section, const Json& info, const char* key, const char* label,
             const char* unit = "")
{
    const auto found = info.find(key);
    if (found != info.end() && !found->is_null()) {
        section.facts.push_back({key, label, *found, unit});
    }
}

void addLines(Section& section, const char* label, std::vector<std::string> lines)
{
    if (!lines.empty()) {
        section.facts.push_back({"", label, Json(), "", std::move(lines)});
    }
}

Section originOf(const Json& info)
{
    Section section{"", ""};
    addFact(section, info, "file", "file");
    constexpr std::array<const char*, 2> facts[] = {
        {"format", "format"},   {"formatVersion", "version"}, {"generator", "generator"},
        {"author", "author"},   {"title", "title"},           {"copyright", "copyright"},
        {"created", "created"}, {"modified", "modified"},     {"upAxis", "up axis"},
    };
    for (const auto& [key, label] : facts) {
        addFact(section, info, key, label);
    }
    addFact(section, info, "unit", "unit", "m");
    addFact(section, info, "seconds", "read in", "s");
    return section;
}

std::vector<std::string> typeLines(const Json& info)
{
    std::vector<std::string> lines;
    for (const auto& [type, count] : info["types"].items()) {
        lines.push_back(textOf(count) + " " + type);
    }
    return lines;
}

std::vector<std::string> animationLines(const Json& info)
{
    std::vector<std::string> lines;
    for (const auto& animation : info["animationLengths"]) {
        lines.push_back(textOf(animation["name"]) + ", " + textOf(animation["seconds"]) + " s");
    }
    return lines;
}

std::vector<std::string> textureLines(const Json& info)
{
    std::vector<std::string> lines;
    for (const auto& texture : info["textureFiles"]) {
        lines.push_back(textOf(texture["file"]) +
                        (texture["isMissing"].get<bool>() ? "  MISSING" : ""));
    }
    return lines;
}

/// In the unit of the scene, and in metres when it is known.
std::vector<std::string> sizeLines(const Json& info)
{
    if (info["size"].is_null()) {
        return {};
    }
    std::vector<std::string> lines{textOf(info["size"]) + " " + host::kSceneUnits};
    if (const auto unit = info.find("sceneUnit"); unit != info.end()) {
        auto metres = info["size"];
        for (auto& length : metres) {
            length = length.get<double>() * unit->get<double>();
        }
        lines.push_back(textOf(metres) + " m");
    }
    return lines;
}

Section contentsOf(const Json& info)
{
    Section section{"", "contents"};
    addFact(section, info, "items", "items");
    addLines(section, "", typeLines(info));
    constexpr std::array<const char*, 2> facts[] = {
        {"depth", "depth"},       {"breadth", "breadth"},     {"meshes", "meshes"},
        {"vertices", "vertices"}, {"faces", "faces"},         {"uvSets", "uv sets"},
        {"bones", "bones"},       {"materials", "materials"}, {"textures", "textures"},
    };
    for (const auto& [key, label] : facts) {
        addFact(section, info, key, label);
    }
    addLines(section, "", textureLines(info));
    if (info.value("embeddedTextures", 0) > 0) {
        addFact(section, info, "embeddedTextures", "in the file");
    }
    addFact(section, info, "animations", "animations");
    addLines(section, "", animationLines(info));
    addLines(section, "size", sizeLines(info));
    if (!info["worldBox"].is_null()) {
        addLines(section, "world box",
                 {textOf(info["worldBox"]["min"]), textOf(info["worldBox"]["max"])});
    }
    return section;
}

Section metadataOf(const Json& info)
{
    Section section{"", "metadata"};
    for (const auto& [key, value] : info["metadata"].items()) {
        section.facts.push_back({"", key, value});
    }
    return section;
}

} // namespace

void writeInfo(const std::vector<Json>& files, InfoForm form, Output& output)
{
    if (form == InfoForm::JsonText) {
        output.line(jsonText({{"files", files}, {"totals", totalsOf(files)}}, output, 2));
    } else if (form == InfoForm::Csv) {
        writeCsv(files, output);
    } else if (files.size() == 1) {
        writeText({originOf(files[0]), contentsOf(files[0]), metadataOf(files[0])}, output);
    } else {
        writeTable(files, output);
    }
}

} // namespace app
