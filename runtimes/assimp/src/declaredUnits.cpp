#include "declaredUnits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <string_view>

#include "fileChecks.h"

namespace Kiv_v4::assimp {

namespace {

std::optional<double> numberNamed(const FileAttributes& metadata, std::string_view name)
{
    const auto found = std::find_if(metadata.begin(), metadata.end(),
                                    [name](const auto& entry) { return entry.name == name; });
    if (found == metadata.end()) {
        return {};
    }
    return std::visit(
        []<class T>(const T& value) -> std::optional<double> {
            if constexpr (std::is_arithmetic_v<T>) {
                return static_cast<double>(value);
            } else {
                return {};
            }
        },
        found->value);
}

/// The unit of a length; `std::nullopt` if it is not a length.
std::optional<double> length(std::optional<double> number)
{
    return number && std::isfinite(*number) && *number > 0 ? number : std::nullopt;
}

/// The axes are numbered; the unit is in centimetres.
DeclaredUnits unitsOfFbx(const FileAttributes& metadata)
{
    DeclaredUnits declared;
    if (const auto centimetres = length(numberNamed(metadata, "UnitScaleFactor"))) {
        declared.unit = *centimetres / 100;
        declared.sceneUnit = declared.unit;
    }
    const auto axis = numberNamed(metadata, "UpAxis");
    if (axis && (*axis == 0 || *axis == 1 || *axis == 2)) {
        const auto isDown = numberNamed(metadata, "UpAxisSign").value_or(1) < 0;
        declared.upAxis = isDown ? "-" : "";
        declared.upAxis->push_back("xyz"[static_cast<std::size_t>(*axis)]);
    }
    return declared;
}

/// The text between the two marks; empty if they are missing.
std::string_view between(std::string_view text, std::string_view before, std::string_view behind)
{
    const auto begin = text.find(before);
    if (begin == text.npos) {
        return {};
    }
    text.remove_prefix(begin + before.size());
    const auto end = text.find(behind);
    return end == text.npos ? std::string_view() : text.substr(0, end);
}

/// The importer rotates and scales the root, and drops the file's declaration.
DeclaredUnits unitsOfCollada(const std::string& file)
{
    const auto header = headerText(file);
    if (header.find("<COLLADA") == header.npos) {
        return {{}, 1.0, {}}; // compressed
    }
    const auto unit = between(header, "<unit", ">");
    const auto metres = between(unit, "meter=\"", "\"");
    auto number = 1.0;
    std::from_chars(metres.data(), metres.data() + metres.size(), number);
    const auto axis = between(header, "<up_axis>", "</up_axis>");
    return {length(number), 1.0, axis == "X_UP" ? "x" : axis == "Z_UP" ? "z" : "y"};
}

} // namespace

DeclaredUnits declaredUnits(const std::string& format, const FileAttributes& metadata,
                            const std::string& file)
{
    if (format.find("FBX") != format.npos) {
        return unitsOfFbx(metadata);
    }
    if (format.starts_with("Collada")) {
        return unitsOfCollada(file);
    }
    if (format.starts_with("glTF")) { // by its definition
        return {1.0, 1.0, "y"};
    }
    return {};
}

} // namespace Kiv_v4::assimp
