#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace app {

/// What to say of a first argument that is neither a command nor an option; empty for others.
[[nodiscard]] std::string commandTrouble(const CLI::App& program, const std::string& word);

/// What to say of arguments that the program, whose parsing they ended, cannot take.
[[nodiscard]] std::string argumentTrouble(const CLI::App& program, const CLI::ParseError& error);

/// For options and arguments that are one of the words.
[[nodiscard]] CLI::Validator oneOf(std::vector<std::string> words);

/// For options whose value must be 0 or more.
[[nodiscard]] CLI::Validator notNegative();

} // namespace app
