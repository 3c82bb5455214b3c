#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "kiv/export.h"

namespace Kiv_v4::document {

/// Returns the file that `file` leads to when it is a symbolic link, or a link to one and so on;
/// otherwise `file`. Throws `std::runtime_error` if links form a circle.
[[nodiscard]] KIV_EXPORT std::filesystem::path linkTarget(const std::filesystem::path& file);

/// Makes `content` the content of the file, which need not exist. Keeps the mode of an existing
/// file, and its owner and group where that is allowed. Writes the content to a new file beside it
/// that then takes its place, so that after any failure the old content or the new one is there as
/// a whole. Follows symbolic links.
///
/// Throws `std::runtime_error`, also for a file that the user may not write, with the reason, not
/// the file, as its message; then the old content is unchanged, and no other file is left behind.
KIV_EXPORT void replaceFile(const std::string& file, std::string_view content);

} // namespace Kiv_v4::document
