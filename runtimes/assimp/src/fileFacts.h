#pragma once

#include <string>

#include "fileAttribute.h"

struct aiScene;

namespace Kiv_v4::assimp {

/// What a file tells of itself and what is in it, as `RunTime` lists it. `scene` is what the
/// importer made of `file`.
[[nodiscard]] FileAttributes fileFacts(const aiScene& scene, const std::string& file);

} // namespace Kiv_v4::assimp
