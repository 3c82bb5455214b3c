#pragma once

#include <optional>
#include <string>

#include "fileAttribute.h"

namespace Kiv_v4::assimp {

/// The units and the axis that a file declares.
struct DeclaredUnits
{
    std::optional<double> unit;      ///< In metres.
    std::optional<double> sceneUnit; ///< The unit of the importer's scene, in metres.
    std::optional<std::string> upAxis;
};

/// Reads the file's metadata, and the file itself if the importer drops its declaration.
[[nodiscard]] DeclaredUnits declaredUnits(const std::string& format, const FileAttributes& metadata,
                                          const std::string& file);

} // namespace Kiv_v4::assimp
