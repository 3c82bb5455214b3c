#include "cli/usageTrouble.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "kiv/host/itemLookup.h"

#include "terminal/diagnostics.h"

namespace app {

namespace {

using Kiv_v4::host::suggestion;

template <class Kind>
bool is(const CLI::ParseError& error)
{
    return dynamic_cast<const Kind*>(&error) != nullptr;
}

std::string notANumber(const std::string& text)
{
    return "not a number: '" + text + "'";
}

/// What to say of a word that the command which was given, or the program, has no place for.
std::string extraTrouble(const CLI::App& program, const std::string& word)
{
    if (!word.starts_with('-')) {
        return "unexpected argument '" + word + "'";
    }
    const auto given = program.get_subcommands();
    std::vector<std::string> names;
    for (const auto* app = given.empty() ? &program : given.front(); app; app = app->get_parent()) {
        for (const auto* option : app->get_options()) {
            for (const auto& name : option->get_lnames()) {
                names.push_back("--" + name);
            }
        }
    }
    const auto name = word.substr(0, word.find('='));
    return "unknown option '" + name + "'" + suggestion(name, names);
}

} // namespace

std::string commandTrouble(const CLI::App& program, const std::string& word)
{
    std::vector<std::string> names;
    for (const auto* command : program.get_subcommands({})) {
        names.push_back(command->get_name());
    }
    if (word.starts_with('-') || std::ranges::find(names, word) != names.end()) {
        return {};
    }
    const auto meant = suggestion(word, names);
    std::error_code none;
    if (meant.empty() &&
        (std::filesystem::exists(word, none) || std::filesystem::path(word).has_extension())) {
        return "'" + word + "' is a file, not a command; did you mean 'kiv tree " + word + "'?";
    }
    return "unknown command '" + word + "'" + meant;
}

std::string argumentTrouble(const CLI::App& program, const CLI::ParseError& error)
{
    const std::string text = error.what();
    auto extras = program.remaining(true);
    if (is<CLI::ExtrasError>(error) && !extras.empty()) {
        const auto option = std::ranges::find_if(
            extras, [](const std::string& word) { return word.starts_with('-'); });
        return extraTrouble(program, option == extras.end() ? extras.front() : *option);
    }
    if (is<CLI::ConversionError>(error)) { // Could not convert: NAME = VALUE
        const auto name = text.find(": ") + 2;
        const auto equals = text.find(" = ");
        return text.substr(name, equals - name) + ": " + notANumber(text.substr(equals + 3));
    }
    if (is<CLI::ArgumentMismatch>(error)) { // NAME: 1 required N missing
        return text.substr(0, text.find(':')) + " wants a value";
    }
    return text.substr(0, text.find('\n'));
}

CLI::Validator oneOf(std::vector<std::string> words)
{
    return {[words = std::move(words)](const std::string& text) {
                const auto isKnown = std::ranges::find(words, text) != words.end();
                return isKnown ? "" : "unknown value '" + text + "'" + alternatives(text, words);
            },
            ""};
}

CLI::Validator notNegative()
{
    return {[](const std::string& text) {
                double number = 0;
                return !CLI::detail::lexical_cast(text, number) ? notANumber(text)
                       : number >= 0                            ? ""
                                                                : "'" + text + "' is less than 0";
            },
            ""};
}

} // namespace app
