#include "diagnostics.h"

#include <iostream>

#include "terminal.h"

namespace app {

void complain(const std::string& message)
{
    std::cerr << "kiv: " + printable(message) + "\n" << std::flush;
}

void complain(const std::string& subject, const std::string& reason)
{
    complain(subject + ": " + reason);
}

} // namespace app
