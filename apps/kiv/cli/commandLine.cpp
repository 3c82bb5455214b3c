#include "cli/commandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <exception>
#include <string>
#include <vector>

#include "kiv/undoableCommandMgr.h"
#include "kiv/versionInfo.h"

#include "cli/commandSyntax.h"
#include "cli/plugins.h"
#include "cli/programCommand.h"
#include "cli/usageTrouble.h"
#include "terminal/diagnostics.h"
#include "terminal/interrupts.h"
#include "terminal/otherProgram.h"
#include "terminal/output.h"

namespace app {

using namespace Kiv_v4;

namespace {

std::string version()
{
    const auto number = [](int part) { return std::to_string(part); };
    return "kiv " + number(VersionInfo::getMajorVersion()) + "." +
           number(VersionInfo::getMinorVersion()) + "." + number(VersionInfo::getPatchLevel()) +
           " (" + VersionInfo::getBuildDate() + ", build " + number(VersionInfo::getBuildNumber()) +
           ", commit " + VersionInfo::getGitCommit() + ", branch " + VersionInfo::getGitBranch() +
           ")";
}

int wrongUsage(const std::string& message)
{
    complain(message + " (kiv --help tells more)");
    return kWrongUsage;
}

/// The program's syntax and all its commands.
std::vector<Command> define(CLI::App& program)
{
    constexpr Command (*definitions[])(CLI::App&) = {
        defineInfo,   defineTree,       defineShow,    defineFind,  defineDiff,
        defineShell,  defineReplay,     defineInspect, defineCheck, definePlugins,
        defineWindow, defineCompletion, defineManual,
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
                output.setColouring(when == "always"  ? Colouring::Always
                                    : when == "never" ? Colouring::Never
                                                      : Colouring::Auto);
            },
            "Colour the output; auto: on a terminal")
        ->type_name("auto|always|never")
        ->check(oneOf({"auto", "always", "never"}));
    program.add_flag_callback(
        "--no-pager", [&output] { output.endPaging(); }, "Use no pager for long output");
}

/// The run-times that the command line names.
struct Sources
{
    std::vector<std::string> plugins;
    std::vector<std::string> python;
};

void defineSources(CLI::App& program, Sources& sources)
{
    program
        .add_option("--plugin", sources.plugins, "Load a plug-in, beside those of KIV_PLUGIN_PATH")
        ->type_name("FILE")
        ->allow_extra_args(false);
    program
        .add_option("--python", sources.python, "Open the run-time that a function in Python gives")
        ->type_name("MODULE:FUNCTION")
        ->allow_extra_args(false);
}

/// Becomes Python, whose package runs the program again.
[[noreturn]] void becomePython(int argc, char** argv)
{
    std::vector<std::string> words{"python3", "-m", "kiv"};
    words.insert(words.end(), argv + 1, argv + argc);
    become(std::move(words), "run-times in Python need Python 3 and its package kiv");
}

/// Installs a command manager, which opening documents needs; the shell has one of its own.
class Installed
{
public:
    Installed() { UndoableCommandMgr::initializeInstance(std::make_shared<UndoableCommandMgr>()); }
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;
    ~Installed() { UndoableCommandMgr::initializeInstance(nullptr); }
};

/// Does what was asked for, with the run-times that it uses.
int obey(const Command& command, const Sources& sources, const Surroundings& around, Output& output)
{
    Plugins plugins(around);
    const Context context{plugins, output, around, sources.python};
    if (!command.usesPlugins) {
        return command.run(context);
    }
    const Installed installed;
    const auto nbRefused = plugins.load(sources.plugins) + plugins.openInPython(sources.python);
    try {
        const auto status = command.run(context);
        return nbRefused > 0 && status == kSuccess ? kFailure : status;
    } catch (const WrongUsage&) {
        if (nbRefused == 0) { // else it may only be that nothing is left to show
            throw;
        }
        return kFailure;
    }
}

int run(int argc, char** argv, const Surroundings& around, Output& output)
{
    CLI::App program("Look into scene files, browse and edit them; kiv COMMAND --help tells more",
                     "kiv");
    program.footer("Example: kiv tree scene.gltf");
    program.formatter(std::make_shared<HelpFormatter>());
    program.require_subcommand(1);
    program.set_help_flag("-h,--help", "Tell how to call kiv or the command");
    program.set_version_flag("--version", version, "Print the version");
    Sources sources;
    defineSources(program, sources);
    defineOutput(program, output);
    program.fallthrough();
    const auto commands = define(program);
    if (const auto trouble = argc > 1 ? commandTrouble(program, argv[1]) : ""; !trouble.empty()) {
        return wrongUsage(trouble);
    }
    try {
        program.parse(argc, argv);
        if (!sources.python.empty() && !around.openInPython) {
            becomePython(argc, argv);
        }
        const auto asked = std::ranges::find_if(
            commands, [](const Command& command) { return command.syntax->parsed(); });
        return obey(*asked, sources, around, output);
    } catch (const CLI::CallForHelp&) {
        output.write(program.help());
        return kSuccess;
    } catch (const CLI::CallForVersion&) {
        output.line(version());
        return kSuccess;
    } catch (const CLI::ParseError& error) {
        return wrongUsage(argumentTrouble(program, error));
    } catch (const WrongUsage& error) {
        return wrongUsage(error.what());
    }
}

/// What is thrown has undone what was half done: files that were being written, steps of edits.
int runToTheEnd(int argc, char** argv, const Surroundings& around)
{
    try {
        Output output;
        const auto status = run(argc, argv, around, output);
        output.flush();
        return status;
    } catch (const std::exception& error) {
        complain(error.what());
    } catch (...) {
        complain("unknown error");
    }
    return kFailure;
}

} // namespace

int runProgram(int argc, char** argv, const Surroundings& surroundings)
{
    std::setlocale(LC_CTYPE, "C.UTF-8"); // so that patterns take characters for bytes of names
    const Interrupts interrupts(Interrupts::Second::EndsProgram);
    const auto status = runToTheEnd(argc, argv, surroundings);
    if (Interrupts::hasCome()) {
        endAsInterrupted();
    }
    return status;
}

} // namespace app
