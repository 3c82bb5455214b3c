#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/engine/script.h"
#include "terminal/output.h"

namespace app::shell {

/// `kiv shell`: what the user asked for.
struct ShellOptions
{
    std::vector<std::string> files;      ///< Mounted before the first command.
    std::optional<std::string> commands; ///< Run instead of standard input.
    ScriptStyle style;
};

/// Runs commands from the options, from a terminal or, as a script, from the standard input. Gives
/// the exit status.
[[nodiscard]] int shellCommand(const ShellOptions& options, Output& output);

} // namespace app::shell
