#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace app {

/// Whether the file descriptor is a terminal.
[[nodiscard]] bool isTerminal(int descriptor);

/// Whether the terminal, by its name, shows plain lines alone.
[[nodiscard]] bool isDumb();

/// Whether the user refused colours with NO_COLOR.
[[nodiscard]] bool refusesColour();

/// `text` with every byte that could steer a terminal, or is no UTF-8, written as `\x1b`: control
/// characters, line and paragraph separators, and marks that turn the direction of writing.
[[nodiscard]] std::string printable(std::string_view text);

/// The number of characters in UTF-8 text, which is about the columns that it takes.
[[nodiscard]] std::size_t columns(std::string_view text);

/// `text` with spaces behind it up to `width` columns.
[[nodiscard]] std::string padded(std::string_view text, std::size_t width);

/// `text` with its words in lines of up to `width` columns, of which all but the first begin with
/// `indent` spaces; the first is taken to begin behind as many columns.
[[nodiscard]] std::string wrapped(std::string_view text, std::size_t width, std::size_t indent);

/// Paints text, or leaves it plain when colours are off.
class Paint
{
public:
    explicit Paint(bool coloured) : _coloured(coloured) {}

    [[nodiscard]] std::string faint(std::string_view text) const { return painted("2", text); }
    [[nodiscard]] std::string nodeType(std::string_view text) const { return painted("36", text); }
    [[nodiscard]] std::string runTime(std::string_view text) const { return painted("33", text); }
    [[nodiscard]] std::string label(std::string_view text) const { return painted("1", text); }
    [[nodiscard]] std::string title(std::string_view text) const { return painted("1;4", text); }

private:
    [[nodiscard]] std::string painted(const char* code, std::string_view text) const;

    bool _coloured;
};

} // namespace app
