#pragma once

#include <string>

namespace Kiv_v4::detail {

/// A place in the source in the form of diagnostics: file, line and function, a tabbed line each.
[[nodiscard]] inline std::string sourceLines(const char* function, const char* file, int line)
{
    return std::string("\tFile: ") + file + "\n\tLine: " + std::to_string(line) +
           "\n\tFunction: " + function + "\n";
}

} // namespace Kiv_v4::detail
