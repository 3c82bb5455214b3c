#include "kiv/log.h"

#include <iostream>

#include "sourceLines.h"

namespace Kiv_v4 {

void log(char const* function, char const* file, int line, std::string const& message)
{
    std::cerr << message + "\n" + detail::sourceLines(function, file, line) << std::flush;
}

} // namespace Kiv_v4
