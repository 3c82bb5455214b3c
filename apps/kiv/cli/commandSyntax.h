#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace app {

/// An option or argument of a command.
struct Parameter
{
    std::vector<std::string> names; ///< With their dashes, short ones first; none for an argument.

    /// Such as `FILE`, or `auto|always|never` for one of these; `[=N]` if it may be left out, empty
    /// for an option without a value.
    std::string value;
    std::string description;
    bool isRequired = false;
    bool isRepeated = false;
};

/// What the help, the manual page and the completions tell of a command.
struct CommandSyntax
{
    std::string name; ///< As it is typed, such as `find`.
    std::string title;
    std::string prose;
    std::string example;
    std::vector<Parameter> arguments;
    std::vector<Parameter> options;
    std::vector<CommandSyntax> commands;
};

/// The syntax of the program or of one of its commands. A footer of the app is prose, and in its
/// last line, behind "Example: ", the example.
[[nodiscard]] CommandSyntax syntaxOf(const CLI::App& app);

/// How to call the command: `find [OPTIONS] [FILE...]`.
[[nodiscard]] std::string callOf(const CommandSyntax& command);

/// The names of the option with its value, or the argument: `--type TYPE`, `FILE...`.
[[nodiscard]] std::string labelOf(const Parameter& parameter);

/// The values to choose from, if `value` lists them; otherwise none.
[[nodiscard]] std::vector<std::string> choicesOf(const Parameter& parameter);

/// Whether the value is a file: all arguments without choices are.
[[nodiscard]] bool isFile(const Parameter& parameter);

/// Whether the value may stand in the next word of the command line.
[[nodiscard]] bool takesNextWord(const Parameter& option);

/// What `--help` prints, in 80 columns.
class HelpFormatter : public CLI::FormatterBase
{
public:
    std::string make_help(const CLI::App* app, std::string, CLI::AppFormatMode) const override;
};

} // namespace app
