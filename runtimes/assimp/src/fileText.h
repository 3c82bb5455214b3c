#pragma once

#include <assimp/types.h>
#include <string_view>

namespace Kiv_v4::assimp {

/// The text of an importer's string, until that changes.
[[nodiscard]] inline std::string_view text(const aiString& string) noexcept
{
    return {string.data, string.length};
}

} // namespace Kiv_v4::assimp
