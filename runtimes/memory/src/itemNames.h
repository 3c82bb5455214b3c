#pragma once

#include <string>

namespace Kiv_v4::memory {

/// Throws `std::invalid_argument` unless `name` can stand in a path string: not empty, no control
/// character, no component separator, no path segment separator.
void requireValidName(const std::string& name);

/// `name` with `_` for the characters that `requireValidName` rejects.
[[nodiscard]] std::string validName(std::string name);

} // namespace Kiv_v4::memory
