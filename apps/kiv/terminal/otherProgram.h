#pragma once

#include <string>
#include <vector>

namespace app {

/// Becomes another program: the first word is its file, or its name on the search path. Throws
/// `std::runtime_error` with the file, the system's reason and the advice if it cannot be run.
[[noreturn]] void become(std::vector<std::string> words, const std::string& advice);

} // namespace app
