#pragma once

#include "fileAttribute.h"

struct aiMaterial;

namespace Kiv_v4::assimp {

/// The file's properties of the material, under the field's names; only those that the file has.
[[nodiscard]] FileAttributes materialAttributes(const aiMaterial& material);

} // namespace Kiv_v4::assimp
