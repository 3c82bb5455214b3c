#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "kiv/export.h"

namespace Kiv_v4::document {

/// Returns the file that `file` leads to when it is a symbolic link, or a link to one and so on;
/// otherwise `file`. Throws `std::runtime_error` for links in a circle.
[[nodiscard]] KIV_EXPORT std::filesystem::path linkTarget(const std::filesystem::path& file);

/// Makes `content` the content of the file, a new one or one that is there, whose mode is kept, and
/// owner and group where that is allowed. The content is written to a new file beside it that then
/// takes its place, so that whatever goes wrong, the old content or the new one is there as a
/// whole. Symbolic links are followed.
///
/// Throws `std::runtime_error`, also for a file that the user may not write, with the reason, not
/// the file, as its message; the old content is there then, and nothing else is left behind.
KIV_EXPORT void replaceFile(const std::string& file, std::string_view content);

} // namespace Kiv_v4::document
