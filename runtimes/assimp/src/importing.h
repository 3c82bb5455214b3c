#pragma once

#include <memory>
#include <string>

#include "kiv/assimp/sceneFile.h"

namespace Kiv_v4::assimp {

/// Runs the importer over `file` and gives the nodes it made; `progress` is not empty. Throws
/// `ImportError`, whatever the importer throws. Nothing is printed.
[[nodiscard]] std::shared_ptr<const SceneFile> importedFile(const std::string& file,
                                                            const Progress& progress);

} // namespace Kiv_v4::assimp
