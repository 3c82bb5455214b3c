#include "cli/commandSyntax.h"

#include <algorithm>
#include <utility>

#include "terminal/terminal.h"

namespace app {

namespace {

constexpr std::size_t kScreen = 80;
constexpr std::size_t kMaxLabel = 26;
constexpr std::string_view kExample = "Example: ";

std::string valueOf(const CLI::Option& option)
{
    const auto value = option.get_type_name();
    const auto takesNone = option.get_items_expected_max() == 0 && !value.starts_with('[');
    return option.get_positional() ? option.get_name() : takesNone ? "" : value;
}

/// Names the options that it excludes and that are listed above it.
std::string descriptionOf(const CLI::Option& option, const std::vector<const CLI::Option*>& above)
{
    auto description = option.get_description();
    const auto excluded = option.get_excludes();
    for (const auto* other : above) {
        if (std::ranges::find(excluded, other) != excluded.end()) {
            description += ", not with " + other->get_name();
        }
    }
    return description;
}

void addParameters(CommandSyntax& syntax, const CLI::App& app)
{
    std::vector<const CLI::Option*> above;
    for (const auto* option : app.get_options()) {
        if (option == app.get_help_ptr() && app.get_parent()) {
            continue; // told once, of the program
        }
        Parameter parameter{{},
                            valueOf(*option),
                            descriptionOf(*option, above),
                            option->get_required(),
                            option->get_items_expected_max() > 1};
        for (const auto& name : option->get_snames()) {
            parameter.names.push_back("-" + name);
        }
        for (const auto& name : option->get_lnames()) {
            parameter.names.push_back("--" + name);
        }
        (option->get_positional() ? syntax.arguments : syntax.options)
            .push_back(std::move(parameter));
        above.push_back(option);
    }
    if (app.get_prefix_command()) {
        syntax.arguments.push_back(
            {{}, "ARGUMENT", "What " + app.get_name() + " takes", false, true});
    }
}

using Rows = std::vector<std::pair<std::string, std::string>>;

std::string textOf(const Rows& rows)
{
    std::size_t width = 0;
    for (const auto& [label, description] : rows) {
        width = std::max(width, label.size() > kMaxLabel ? 0 : label.size());
    }
    std::string text = "\n";
    for (const auto& [label, description] : rows) {
        text += "  " + padded(label, width) +
                (label.size() > width ? "\n" + std::string(width + 4, ' ') : "  ") +
                wrapped(description, kScreen, width + 4) + "\n";
    }
    return text;
}

} // namespace

CommandSyntax syntaxOf(const CLI::App& app)
{
    CommandSyntax syntax{app.get_name(), app.get_description(), app.get_footer(), {}, {}, {}, {}};
    if (const auto example = syntax.prose.rfind(kExample); example != std::string::npos) {
        syntax.example = syntax.prose.substr(example + kExample.size());
        syntax.prose.erase(example);
    }
    addParameters(syntax, app);
    for (const auto* command : app.get_subcommands([](const CLI::App* any) {
             return !any->get_group().empty(); // else it is hidden
         })) {
        syntax.commands.push_back(syntaxOf(*command));
    }
    return syntax;
}

std::string callOf(const CommandSyntax& command)
{
    auto call = command.name + (command.options.empty() ? "" : " [OPTIONS]");
    for (const auto& argument : command.arguments) {
        const auto label = labelOf(argument);
        call += argument.isRequired ? " " + label : " [" + label + "]";
    }
    return call + (command.commands.empty() ? "" : " COMMAND ...");
}

std::string labelOf(const Parameter& parameter)
{
    if (parameter.names.empty()) {
        return parameter.value + (parameter.isRepeated ? "..." : "");
    }
    std::string label;
    for (const auto& name : parameter.names) {
        label += (label.empty() ? "" : ", ") + name;
    }
    return label + (takesNextWord(parameter) ? " " : "") + parameter.value;
}

std::vector<std::string> choicesOf(const Parameter& parameter)
{
    return parameter.value.find('|') == std::string::npos
               ? std::vector<std::string>()
               : CLI::detail::split(parameter.value, '|');
}

bool isFile(const Parameter& parameter)
{
    return parameter.names.empty() ? choicesOf(parameter).empty() : parameter.value == "FILE";
}

bool takesNextWord(const Parameter& option)
{
    return !option.value.empty() && !option.value.starts_with('[');
}

std::string HelpFormatter::make_help(const CLI::App* app, std::string, CLI::AppFormatMode) const
{
    const auto syntax = syntaxOf(*app);
    const auto* parent = app->get_parent();
    Rows rows;
    for (const auto* parameters : {&syntax.arguments, &syntax.options}) {
        for (const auto& parameter : *parameters) {
            rows.emplace_back(labelOf(parameter), parameter.description);
        }
    }
    auto text = "Usage: " + (parent ? parent->get_name() + " " : "") + callOf(syntax) + "\n" +
                wrapped(syntax.title, kScreen, 0) + ".\n" + (rows.empty() ? "" : textOf(rows));
    Rows commands;
    for (const auto& command : syntax.commands) {
        commands.emplace_back(command.name, command.title);
    }
    text += commands.empty() ? "" : textOf(commands);
    text += "\n" + (syntax.prose.empty() ? "" : wrapped(syntax.prose, kScreen, 0) + "\n");
    return text + std::string(kExample) + syntax.example + "\n";
}

} // namespace app
