#pragma once

#include <exception>
#include <functional>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4 {

/// Writes a diagnostic record to the standard error stream: the message and a line break, then a
/// line each for file, line and function, indented by a tab. There are no levels.
///
/// A caught exception reaches it as "caught exception ", the exception's text and a line break, so
/// an empty line stands between message and "File: ".
KIV_EXPORT void log(const char* function, const char* file, int line, const std::string& message);

/// A diagnostic record, for those who show it elsewhere too. References are good for the call.
struct LogRecord
{
    const char* function;       ///< The arguments of `log`.
    const char* file;           ///< As above.
    int line;                   ///< As above.
    const std::string& message; ///< As above.
    std::exception_ptr error;   ///< The exception that is being handled; null when there is none.
};

/// What is given each record once it is written. What it throws is dropped, and what is logged
/// while it runs is only written.
using LogListener = std::function<void(const LogRecord&)>;

/// Lets `listener`, one for the process, have the records; an empty one ends that. Hosts use
/// `host::ErrorChannel`, of which there may be many.
KIV_EXPORT void setLogListener(LogListener listener);

} // namespace Kiv_v4
