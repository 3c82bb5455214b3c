#pragma once

#include <string>
#include <vector>

namespace app {

/// What the program returns to the shell.
enum ExitStatus : int {
    kSuccess = 0,
    kFailure = 1,    ///< Something that was asked for could not be done.
    kWrongUsage = 2, ///< The arguments make no sense.
};

/// Writes `kiv: message` as one line, whatever `message` holds, to the standard error stream. What
/// Python raised has its traceback above that line.
void complain(const std::string& message);

/// Writes `kiv: subject: reason`.
void complain(const std::string& subject, const std::string& reason);

/// Returns the names that would have served in place of `word`, and the one that was meant if one
/// is near: ` (mesh, root); did you mean 'mesh'?`
[[nodiscard]] std::string alternatives(const std::string& word,
                                       const std::vector<std::string>& names);

} // namespace app
