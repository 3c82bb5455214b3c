#include <iostream>
#include <utility>

#include "lineReader.h"

namespace app::shell {

struct LineReader::State
{};

LineReader::LineReader(Completer) {}

LineReader::~LineReader() = default;

std::optional<std::string> LineReader::read(const std::string& prompt)
{
    std::cout << prompt << std::flush;
    std::string line;
    return std::getline(std::cin, line) ? std::optional(std::move(line)) : std::nullopt;
}

} // namespace app::shell
