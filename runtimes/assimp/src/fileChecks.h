#pragma once

#include <string>

namespace Kiv_v4::assimp {

/// Throws `ImportError` unless `file` is a regular file that can be opened.
void requireReadable(const std::string& file);

/// Returns the beginning of the file with one kind of line break, where headers are looked for.
[[nodiscard]] std::string headerText(const std::string& file);

/// Throws `ImportError` when the header of a file (OFF, PLY) counts more elements than the file has
/// bytes. The importer would make room for all of them before it looks for the first.
void requirePlausibleCounts(const std::string& file);

} // namespace Kiv_v4::assimp
