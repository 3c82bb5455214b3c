#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace app::shell {

using Words = std::vector<std::string>;

/// The commands of one line: separated by `;`, their words by blanks. Quotes '...' keep everything
/// as it is; in "..." a backslash keeps the next character, as it does outside. A `#` where a word
/// could begin makes the rest of the line a comment. Throws `std::runtime_error` for a quote that
/// is not closed. Commands are not empty.
[[nodiscard]] std::vector<Words> commandsOf(std::string_view line);

/// The command that is being typed at the end of a line, for completion.
struct Typing
{
    Words words;           ///< Those that are complete.
    std::string word;      ///< The last one, as far as it goes; may be empty.
    std::size_t begin = 0; ///< Where the last one begins in the line.
};

[[nodiscard]] Typing typingOf(std::string_view line);

/// `word` as a line must have it to be that word again, with backslashes where they must be.
[[nodiscard]] std::string escaped(const std::string& word);

} // namespace app::shell
