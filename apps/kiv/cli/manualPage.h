#pragma once

#include <string>

#include "cli/commandSyntax.h"

namespace app {

/// The manual page of the program and of its shell, for `man`.
[[nodiscard]] std::string manualPage(const CommandSyntax& program);

} // namespace app
