#include "terminal/diagnostics.h"

#include <iostream>
#include <sstream>
#include <string_view>

#include "kiv/host/itemLookup.h"

#include "terminal/terminal.h"

namespace app {

namespace {

constexpr std::string_view kTraceback = "Traceback (most recent call last):\n";

/// The lines of a traceback that the message ends with, but the last one, which stays in `message`.
std::string takeTraceback(std::string& message)
{
    const auto begin = message.find(kTraceback);
    const auto last = message.find_last_not_of('\n');
    if (begin == std::string::npos || last == std::string::npos) {
        return {};
    }
    std::istringstream lines(message.substr(begin, last + 1 - begin));
    message.erase(begin);
    std::string text;
    std::string line;
    for (std::string next; std::getline(lines, next); line = next) {
        text += line.empty() ? "" : printable(line) + "\n";
    }
    message += line;
    return text;
}

} // namespace

void complain(const std::string& message)
{
    auto reason = message;
    const auto traceback = takeTraceback(reason);
    std::cerr << traceback + "kiv: " + printable(reason) + "\n" << std::flush;
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
