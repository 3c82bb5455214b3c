#include <exception>
#include <iostream>
#include <sstream>
#include <unistd.h>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"

#include "cli/filling.h"
#include "cli/programCommand.h"
#include "shell/engine/completion.h"
#include "shell/engine/lineReader.h"
#include "shell/engine/script.h"
#include "terminal/diagnostics.h"
#include "terminal/interrupts.h"
#include "terminal/terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

struct ShellOptions
{
    SceneWishes scene;
    std::optional<std::string> commands; ///< Run instead of standard input.
    ScriptStyle style;
};

int runScript(Session& session, std::istream& lines, const ScriptStyle& style)
{
    try {
        return runLines(session, lines, style) ? kSuccess : kFailure;
    } catch (const std::exception& error) {
        report(session, error.what());
        return kFailure;
    }
}

std::string promptOf(const Session& session)
{
    return "kiv " + printable(PathString::string(session.current()->path())) +
           (session.isInStep() ? " (step)> " : "> ");
}

/// Runs a line that was typed, or leaves the shell where there was none any more.
void obey(Session& session, const std::optional<std::string>& line)
{
    Interrupts::forget();
    if (!line) {
        session.output().line("");
        return session.quit();
    }
    try {
        runLine(session, *line);
    } catch (const std::exception& error) {
        report(session, error.what());
    }
}

void converse(Session& session)
{
    const Interrupts interrupts(Interrupts::Second::Waits);
    LineReader reader([&](std::string_view line) { return completionOf(session, line); });
    session.output().line("kiv shell: help lists the commands, the tab key completes, quit leaves");
    session.guardChanges();
    while (!session.isOver()) {
        session.output().flush();
        obey(session, reader.read(promptOf(session)));
        if (session.isOver() && session.isChanged()) {
            report(session, "the scene is not saved; quit again to leave");
            session.stay();
        }
    }
}

/// Begins at the items of the first run-time of a plug-in when there is nothing else to see.
void goToFirst(Session& session, const Plugins& plugins)
{
    const auto tops = plugins.topItems();
    if (!tops.empty() && !Hierarchy::hierarchy(session.scene().root())->hasChildren()) {
        session.setCurrent(tops.front());
    }
}

/// Runs commands from the options, from a terminal or, as a script, from the standard input.
int shell(const ShellOptions& options, const Context& context)
{
    auto& output = context.output;
    Session session(output);
    const auto isInteractive = !options.commands && isTerminal(STDIN_FILENO) && output.isTerminal();
    const auto notMounted = fill(session.scene(), options.scene, context.plugins);
    session.history().clear();
    goToFirst(session, context.plugins);
    if (notMounted > 0 && !isInteractive && !options.style.keepsGoing) {
        return kFailure;
    }
    if (isInteractive) {
        converse(session);
        return kSuccess;
    }
    std::istringstream commands(options.commands.value_or(""));
    const auto status = runScript(session, options.commands ? commands : std::cin, options.style);
    return notMounted == 0 ? status : kFailure;
}

} // namespace

} // namespace app::shell

namespace app {

Command defineShell(CLI::App& program)
{
    const auto options = std::make_shared<shell::ShellOptions>();
    auto& syntax = *program.add_subcommand("shell", "Browse and edit a scene by commands");
    syntax.footer("Commands come from -c, from the terminal, or from the standard input as a "
                  "script: then the "
                  "first error ends it with exit status 1. The command help lists the commands.\n"
                  "Example: kiv shell workshop.gltf -c 'find --lights; select @found; hide @'");
    defineScene(syntax, options->scene);
    syntax
        .add_option("-c", options->commands,
                    "Run these commands, separated by ; or newlines, and leave")
        ->type_name("COMMANDS");
    syntax.add_flag("--keep-going", options->style.keepsGoing,
                    "After an error in a script, go on with the next line");
    syntax.add_flag("--echo", options->style.echoes, "Print each line of a script before it runs");
    return {&syntax, [options](const Context& context) { return shell::shell(*options, context); }};
}

} // namespace app
