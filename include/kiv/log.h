#pragma once

#include <exception>
#include <functional>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4 {

/// Writes a diagnostic record to the standard error stream: the message and a line break, then a
/// line each for file, line and function, indented by a tab. There are no levels.
///
/// For a caught exception, `message` is "caught exception ", the exception's text and a line break,
/// so an empty line stands between the message and "File: ".
KIV_EXPORT void log(const char* function, const char* file, int line, const std::string& message);

/// A diagnostic record, for listeners that show it elsewhere too. References are valid during the
/// call.
struct LogRecord
{
    const char* function;       ///< The arguments of `log`.
    const char* file;           ///< As above.
    int line;                   ///< As above.
    const std::string& message; ///< As above.
    std::exception_ptr error;   ///< The exception being handled; null if there is none.
};

/// Called with each record after it was written. Its exceptions are dropped, and records made while
/// it runs are written but not passed to it.
using LogListener = std::function<void(const LogRecord&)>;

/// Sets the listener of the process; an empty function removes it. Hosts use `host::ErrorChannel`,
/// of which there may be many.
KIV_EXPORT void setLogListener(LogListener listener);

} // namespace Kiv_v4
