#pragma once

#include "fileAttribute.h"

struct aiMaterial;

namespace Kiv_v4::assimp {

/// What the file says about how the material looks, under the field's names; nothing that it does
/// not say.
[[nodiscard]] FileAttributes materialAttributes(const aiMaterial& material);

} // namespace Kiv_v4::assimp
