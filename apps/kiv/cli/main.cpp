#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "kiv/host/itemLookup.h"
#include "kiv/versionInfo.h"

#include "cli/plugins.h"
#include "cli/programCommand.h"
#include "terminal/diagnostics.h"
#include "terminal/output.h"

namespace {

using app::Command;
using app::Output;

std::string version()
{
    using Kiv_v4::VersionInfo;
    const auto number = [](int part) { return std::to_string(part); };
    return "kiv " + number(VersionInfo::getMajorVersion()) + "." +
           number(VersionInfo::getMinorVersion()) + "." + number(VersionInfo::getPatchLevel()) +
           " (" + VersionInfo::getBuildDate() + ", build " + number(VersionInfo::getBuildNumber()) +
           ", commit " + VersionInfo::getGitCommit() + ", branch " + VersionInfo::getGitBranch() +
           ")";
}

int wrongUsage(const std::string& message)
{
    app::complain(message.substr(0, message.find('\n')) + " (kiv --help tells more)");
    return app::kWrongUsage;
}

/// What to say of a first argument that is neither a command nor an option; empty for others.
std::string commandTrouble(const CLI::App& program, const std::string& word)
{
    std::vector<std::string> names;
    for (const auto* command : program.get_subcommands({})) {
        names.push_back(command->get_name());
    }
    if (word.starts_with('-') || std::ranges::find(names, word) != names.end()) {
        return {};
    }
    const auto meant = Kiv_v4::host::suggestion(word, names);
    std::error_code none;
    if (meant.empty() &&
        (std::filesystem::exists(word, none) || std::filesystem::path(word).has_extension())) {
        return "'" + word + "' is a file, not a command; did you mean 'kiv tree " + word + "'?";
    }
    return "unknown command '" + word + "'" + meant;
}

/// The program's syntax and all its commands.
std::vector<Command> define(CLI::App& program)
{
    constexpr Command (*definitions[])(CLI::App&) = {
        app::defineInfo,  app::defineTree,    app::defineShow,   app::defineFind,
        app::defineDiff,  app::defineShell,   app::defineReplay, app::defineInspect,
        app::defineCheck, app::definePlugins, app::defineWindow,
    };
    std::vector<Command> commands;
    for (const auto definition : definitions) {
        commands.push_back(definition(program));
    }
    return commands;
}

/// Does what was asked for, with the plug-ins loaded if it uses them.
int obey(const Command& command, const std::vector<std::string>& pluginFiles, Output& output)
{
    app::Plugins plugins;
    const auto nbRefused = command.usesPlugins ? plugins.load(pluginFiles) : 0;
    const auto status = command.run({plugins, output});
    return nbRefused > 0 && status == app::kSuccess ? app::kFailure : status;
}

int run(int argc, char** argv, Output& output)
{
    CLI::App program("Looks into scene files.", "kiv");
    program.require_subcommand(1);
    program.set_version_flag("--version", version);
    std::vector<std::string> pluginFiles;
    program
        .add_option("--plugin", pluginFiles,
                    "Load a plug-in first; those that KIV_PLUGIN_PATH names are loaded anyway")
        ->type_name("FILE")
        ->allow_extra_args(false);
    program.fallthrough();
    const auto commands = define(program);
    if (const auto trouble = argc > 1 ? commandTrouble(program, argv[1]) : ""; !trouble.empty()) {
        return wrongUsage(trouble);
    }
    try {
        program.parse(argc, argv);
        const auto asked = std::ranges::find_if(
            commands, [](const Command& command) { return command.syntax->parsed(); });
        return obey(*asked, pluginFiles, output);
    } catch (const CLI::CallForHelp&) {
        output.write(program.help());
        return app::kSuccess;
    } catch (const CLI::CallForVersion&) {
        output.line(version());
        return app::kSuccess;
    } catch (const CLI::ParseError& error) {
        return wrongUsage(error.what());
    } catch (const app::WrongUsage& error) {
        return wrongUsage(error.what());
    }
}

} // namespace

int main(int argc, char** argv)
{
    std::setlocale(LC_CTYPE, "C.UTF-8"); // so that patterns take characters for bytes of names
    try {
        Output output;
        const auto status = run(argc, argv, output);
        output.flush();
        return status;
    } catch (const std::exception& error) {
        app::complain(error.what());
    } catch (...) {
        app::complain("unknown error");
    }
    return app::kFailure;
}
