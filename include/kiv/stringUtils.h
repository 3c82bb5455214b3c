#pragma once

#include <string>
#include <vector>

#include "kiv/export.h"

namespace Kiv_v4 {

/// `s` without its leading characters equal to `c`; all of `s` when `c` is 0.
[[nodiscard]] KIV_EXPORT std::string lstrip(std::string s, char c);

/// The pieces of `s` between the occurrences of `c`. Empty pieces in front and in the middle are
/// kept; a trailing `c` makes no empty last piece; an empty `s` has no pieces: `a//b` is `a`, ``,
/// `b`; `/a` is ``, `a`; `a/` is `a`.
///
/// A `c` of 0 separates nothing: the result is `s` alone, even if `s` is empty.
[[nodiscard]] KIV_EXPORT std::vector<std::string> split(const std::string& s, char c);

/// The same with a separator of any length; an empty `separator` separates nothing.
[[nodiscard]] KIV_EXPORT std::vector<std::string> split(const std::string& s,
                                                        const std::string& separator);

/// Whether the last characters of `s` are `suffix`. Every string ends with the empty suffix.
[[nodiscard]] KIV_EXPORT bool endsWith(const std::string& s, const std::string& suffix);

} // namespace Kiv_v4
