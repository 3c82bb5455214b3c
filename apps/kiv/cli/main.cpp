#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <exception>
#include <string>
#include <vector>

#include "kiv/versionInfo.h"

#include "cli/commandSyntax.h"
#include "cli/plugins.h"
#include "cli/programCommand.h"
#include "cli/usageTrouble.h"
#include "terminal/diagnostics.h"
#include "terminal/interrupts.h"
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
    app::complain(message + " (kiv --help tells more)");
    return app::kWrongUsage;
}

/// The program's syntax and all its commands.
std::vector<Command> define(CLI::App& program)
{
    constexpr Command (*definitions[])(CLI::App&) = {
        app::defineInfo,   app::defineTree,    app::defineShow,   app::defineFind,
        app::defineDiff,   app::defineShell,   app::defineReplay, app::defineInspect,
        app::defineCheck,  app::definePlugins, app::defineWindow, app::defineCompletion,
        app::defineManual,
    };
    std::vector<Command> commands;
    for (const auto definition : definitions) {
        commands.push_back(definition(program));
    }
    return commands;
}

void defineOutput(CLI::App& program, Output& output)
{
    program
        .add_option_function<std::string>(
            "--color",
            [&output](const std::string& when) {
                output.setColouring(when == "always"  ? app::Colouring::Always
                                    : when == "never" ? app::Colouring::Never
                                                      : app::Colouring::Auto);
            },
            "Colour the output; auto: on a terminal")
        ->type_name("auto|always|never")
        ->check(app::oneOf({"auto", "always", "never"}));
    program.add_flag_callback(
        "--no-pager", [&output] { output.endPaging(); }, "Use no pager for long output");
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
    CLI::App program("Look into scene files, browse them and edit them", "kiv");
    program.footer("kiv COMMAND --help tells more of a command.\nExample: kiv tree scene.gltf");
    program.formatter(std::make_shared<app::HelpFormatter>());
    program.require_subcommand(1);
    program.set_help_flag("-h,--help", "Tell how to call kiv or the command");
    program.set_version_flag("--version", version, "Print the version");
    std::vector<std::string> pluginFiles;
    program.add_option("--plugin", pluginFiles, "Load a plug-in, beside those of KIV_PLUGIN_PATH")
        ->type_name("FILE")
        ->allow_extra_args(false);
    defineOutput(program, output);
    program.fallthrough();
    const auto commands = define(program);
    if (const auto trouble = argc > 1 ? app::commandTrouble(program, argv[1]) : "";
        !trouble.empty()) {
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
        return wrongUsage(app::argumentTrouble(program, error));
    } catch (const app::WrongUsage& error) {
        return wrongUsage(error.what());
    }
}

/// What is thrown has undone what was half done: files that were being written, steps of edits.
int runToTheEnd(int argc, char** argv)
{
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

} // namespace

int main(int argc, char** argv)
{
    std::setlocale(LC_CTYPE, "C.UTF-8"); // so that patterns take characters for bytes of names
    const app::Interrupts interrupts(app::Interrupts::Second::EndsProgram);
    const auto status = runToTheEnd(argc, argv);
    if (app::Interrupts::hasCome()) {
        app::endAsInterrupted();
    }
    return status;
}
