#pragma once

#include <string>

namespace Kiv_v4::assimp {

/// Throws `ImportError` unless `file` is a regular file that can be opened.
void requireReadable(const std::string& file);

/// Returns the beginning of the file, where headers are, with normalized line breaks.
[[nodiscard]] std::string headerText(const std::string& file);

/// Throws `ImportError` if the header of a file (OFF, PLY) counts more elements than the file has
/// bytes. The importer would allocate all of them before it reads the first.
void requirePlausibleCounts(const std::string& file);

} // namespace Kiv_v4::assimp
