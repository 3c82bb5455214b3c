#include "cli/manualPage.h"

#include "kiv/versionInfo.h"

#include "shell/engine/commandTable.h"

namespace app {

namespace {

/// `text` as one line of input for roff that shows it as it is.
std::string roff(std::string_view text)
{
    std::string result = text.starts_with('.') ? "\\&" : "";
    for (const char c : text) {
        switch (c) {
        case '\\':
            result += "\\e";
            break;
        case '-':
            result += "\\-";
            break;
        case '\'':
            result += "\\(aq";
            break;
        case '\n':
            result += ' ';
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string paragraph(std::string_view text)
{
    return text.empty() ? "" : ".PP\n" + roff(text) + "\n";
}

std::string exampleBlock(std::string_view example)
{
    return example.empty() ? "" : ".PP\nExample:\n.PP\n.EX\n" + roff(example) + "\n.EE\n";
}

/// An entry of a list: a term in bold type, what follows it in the same line, and the explanation.
std::string entry(std::string_view term, std::string_view rest, std::string_view explanation)
{
    return ".TP\n\\fB" + roff(term) + "\\fR" + (rest.empty() ? "" : " " + roff(rest)) + "\n" +
           roff(explanation) + "\n";
}

std::string entries(const std::vector<Parameter>& parameters)
{
    std::string text;
    for (const auto& parameter : parameters) {
        text += entry(labelOf(parameter), "", parameter.description + ".");
    }
    return text;
}

std::string chapter(const CommandSyntax& command)
{
    return ".SS " + roff("kiv " + callOf(command)) + "\n" + roff(command.title + ".") + "\n" +
           paragraph(command.prose) + entries(command.arguments) + entries(command.options) +
           exampleBlock(command.example);
}

std::string shellChapter(const shell::CommandKind& kind)
{
    auto text = ".SS " + roff(kind.title) + "\n";
    for (const auto& command : kind.commands) {
        text += entry(command.name, command.usage, command.summary);
        text += ".br\nExample: " + roff(command.example) + "\n";
    }
    return text;
}

} // namespace

std::string manualPage(const CommandSyntax& program)
{
    using Kiv_v4::VersionInfo;
    const auto version = std::to_string(VersionInfo::getMajorVersion()) + "." +
                         std::to_string(VersionInfo::getMinorVersion()) + "." +
                         std::to_string(VersionInfo::getPatchLevel());
    auto text = ".TH KIV 1 \"\" \"kiv " + version +
                "\" \"User Commands\"\n.SH NAME\nkiv \\- look into scene files\n"
                ".SH SYNOPSIS\n" +
                roff(callOf(program)) + "\n.SH DESCRIPTION\n" + roff(program.prose) + "\n" +
                exampleBlock(program.example) + ".SH OPTIONS\n" + entries(program.options) +
                ".SH COMMANDS\n";
    for (const auto& command : program.commands) {
        text += chapter(command);
    }
    text += ".SH COMMANDS OF THE SHELL\n" +
            roff("kiv shell reads these from a terminal, from its option -c, and from scripts.") +
            "\n";
    for (const auto& kind : shell::commandKinds()) {
        text += shellChapter(kind);
    }
    return text + ".SH EXIT STATUS\n" + entry("0", "", "Everything that was asked for was done.") +
           entry("1", "", "Something could not be done, was not found or differs.") +
           entry("2", "", "The arguments make no sense; for kiv diff also trouble.") +
           ".SH ENVIRONMENT\n" +
           entry("KIV_PLUGIN_PATH", "", "Folders whose plug-ins are loaded, separated by colons.") +
           entry("NO_COLOR", "", "If set and not empty, nothing is coloured by itself.") +
           entry("PAGER", "", "Shows output that does not fit the terminal; empty for none.");
}

} // namespace app
