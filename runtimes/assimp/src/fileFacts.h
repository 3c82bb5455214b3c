#pragma once

#include <string>

#include "fileAttribute.h"

struct aiScene;

namespace Kiv_v4::assimp {

/// The facts of a file that `RunTime` lists. `scene` is the importer's scene of `file`.
[[nodiscard]] FileAttributes fileFacts(const aiScene& scene, const std::string& file);

} // namespace Kiv_v4::assimp
