#include <cerrno>
#include <cstdio>
#include <iostream>

#include "shell/engine/lineReader.h"

namespace app::shell {

struct LineReader::State
{};

LineReader::LineReader(Completer) {}

LineReader::~LineReader() = default;

std::optional<std::string> LineReader::read(const std::string& prompt)
{
    std::cout << prompt << std::flush;
    std::string line;
    errno = 0;
    if (std::getline(std::cin, line)) {
        return line;
    }
    if (errno != EINTR) {
        return std::nullopt;
    }
    std::clearerr(stdin);
    std::cin.clear();
    std::cout << '\n';
    return std::string();
}

} // namespace app::shell
