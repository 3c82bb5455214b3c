#include "terminal/diagnostics.h"

#include <iostream>

#include "kiv/host/itemLookup.h"

#include "terminal/terminal.h"

namespace app {

void complain(const std::string& message)
{
    std::cerr << "kiv: " + printable(message) + "\n" << std::flush;
}

void complain(const std::string& subject, const std::string& reason)
{
    complain(subject + ": " + reason);
}

std::string alternatives(const std::string& word, const std::vector<std::string>& names)
{
    std::string list;
    for (const auto& name : names) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return " (" + list + ")" + Kiv_v4::host::suggestion(word, names);
}

} // namespace app
