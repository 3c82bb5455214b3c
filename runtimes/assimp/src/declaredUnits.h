#pragma once

#include <optional>
#include <string>

#include "fileAttribute.h"

namespace Kiv_v4::assimp {

/// What a file says of the space that it is modelled in.
struct DeclaredUnits
{
    std::optional<double> unit;      ///< In metres.
    std::optional<double> sceneUnit; ///< The unit of what the importer made of it, in metres.
    std::optional<std::string> upAxis;
};

/// Looks into the file's metadata, and into the file where the importer drops what it says.
[[nodiscard]] DeclaredUnits declaredUnits(const std::string& format, const FileAttributes& metadata,
                                          const std::string& file);

} // namespace Kiv_v4::assimp
