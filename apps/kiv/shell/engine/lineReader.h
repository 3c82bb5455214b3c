#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "shell/engine/completion.h"

namespace app::shell {

/// Reads lines from the terminal, with editing, a history that is kept between sessions, and
/// completion by the tab key; or, in a build without the means for that, plain lines. Which of the
/// two it is, is chosen when the program is built.
///
/// Where interrupts do not end the program, one drops the line that is being typed.
class LineReader
{
public:
    using Completer = std::function<Completion(std::string_view line)>;

    explicit LineReader(Completer completer);
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;
    ~LineReader();

    /// The next line without its end, or nothing at the end of input.
    [[nodiscard]] std::optional<std::string> read(const std::string& prompt);

private:
    struct State;

    const std::unique_ptr<State> _state;
};

} // namespace app::shell
