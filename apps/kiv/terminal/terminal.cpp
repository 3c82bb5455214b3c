#include "terminal/terminal.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

#include "kiv/host/utf8.h"

namespace app {

namespace host = Kiv_v4::host;

namespace {

bool steersTerminal(char32_t code)
{
    const auto within = [code](char32_t first, char32_t last) {
        return code >= first && code <= last;
    };
    return within(0, 0x1F) || within(0x7F, 0x9F) || within(0x200E, 0x200F) ||
           within(0x2028, 0x202E) || within(0x2066, 0x2069);
}

void appendEscaped(std::string& result, std::string_view bytes)
{
    constexpr auto digits = "0123456789abcdef";
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        result += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
    }
}

} // namespace

bool isTerminal(int descriptor)
{
    return ::isatty(descriptor) == 1;
}

bool isDumb()
{
    const auto* terminal = std::getenv("TERM");
    return !terminal || std::string_view(terminal) == "dumb";
}

bool refusesColour()
{
    const auto* refusal = std::getenv("NO_COLOR");
    return refusal && *refusal;
}

std::string printable(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const auto character = host::firstCharacter(text);
        const auto bytes = text.substr(0, character.length == 0 ? 1 : character.length);
        if (character.length == 0 || steersTerminal(character.code)) {
            appendEscaped(result, bytes);
        } else {
            result += bytes;
        }
        text.remove_prefix(bytes.size());
    }
    return result;
}

std::size_t columns(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

std::string padded(std::string_view text, std::size_t width)
{
    const auto taken = columns(text);
    return std::string(text) + std::string(width > taken ? width - taken : 0, ' ');
}

std::string wrapped(std::string_view text, std::size_t width, std::size_t indent)
{
    std::string result;
    std::istringstream words{std::string(text)};
    auto column = indent;
    for (std::string word; words >> word;) {
        const auto isFirst = result.empty();
        if (!isFirst && column + 1 + columns(word) > width) {
            result += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (!isFirst) {
            result += ' ';
            ++column;
        }
        result += word;
        column += columns(word);
    }
    return result;
}

std::string Paint::painted(const char* code, std::string_view text) const
{
    if (!_coloured || text.empty()) {
        return std::string(text);
    }
    return std::string("\x1b[") + code + "m" + std::string(text) + "\x1b[0m";
}

} // namespace app
