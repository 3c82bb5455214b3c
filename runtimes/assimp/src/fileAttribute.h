#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "kiv/typedColorN.h"
#include "kiv/typedVectorN.h"

struct aiMetadata;

namespace Kiv_v4::assimp {

/// A value of a type that attributes do not have.
struct NativeValue
{
    std::string type;
    std::string text;
};

/// A file name as in the scene file.
struct FileName
{
    std::string text;
};

/// A named value of a node or a material.
struct FileAttribute
{
    using Value = std::variant<bool, int, float, double, std::string, TypedVectorN<float, 2>,
                               TypedVectorN<float, 3>, TypedColorN<float, 3>, TypedColorN<float, 4>,
                               FileName, NativeValue>;

    std::string name; ///< Unique within the node or material.
    Value value;
};

using FileAttributes = std::vector<FileAttribute>;

/// A number as the first type that holds it exactly.
[[nodiscard]] FileAttribute::Value numberValue(std::uint64_t number);

/// Adds an attribute, under the next free name if its name is taken.
void addAttribute(FileAttributes& attributes, const std::string& name, FileAttribute::Value value);

/// Adds many, each like that.
void addAttributes(FileAttributes& attributes, FileAttributes more);

/// Adds the entries in their order, those of nested metadata as "outer.inner". Leaves out entries
/// without a value.
void addMetadata(FileAttributes& attributes, const aiMetadata& metadata);

} // namespace Kiv_v4::assimp
