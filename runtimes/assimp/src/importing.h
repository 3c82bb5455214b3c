#pragma once

#include <memory>
#include <string>

#include "kiv/assimp/sceneFile.h"

namespace Kiv_v4::assimp {

/// Runs the importer on `file` and returns its nodes; `progress` must not be empty. Throws
/// `ImportError`, whatever the importer throws. Prints nothing.
[[nodiscard]] std::shared_ptr<const SceneFile> importedFile(const std::string& file,
                                                            const Progress& progress);

} // namespace Kiv_v4::assimp
