#pragma once

#include <string>

#include "cli/commandSyntax.h"

namespace app {

// Completions of the program's command line, as scripts for the shells that people type it into.

[[nodiscard]] std::string bashCompletion(const CommandSyntax& program);
[[nodiscard]] std::string zshCompletion(const CommandSyntax& program);
[[nodiscard]] std::string fishCompletion(const CommandSyntax& program);

} // namespace app
