#pragma once

#include <string>

#include "kiv/export.h"

namespace Kiv_v4 {

/// Writes a diagnostic record to the standard error stream: the message and a line break, then a
/// line each for file, line and function, indented by a tab. There are no levels.
///
/// A caught exception reaches it as "caught exception ", the exception's text and a line break, so
/// an empty line stands between message and "File: ".
KIV_EXPORT void log(char const* function, char const* file, int line, std::string const& message);

} // namespace Kiv_v4
