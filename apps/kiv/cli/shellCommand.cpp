#include "cli/shellCommand.h"

#include <exception>
#include <iostream>
#include <sstream>
#include <unistd.h>

#include "kiv/pathString.h"

#include "cli/filling.h"
#include "shell/engine/completion.h"
#include "shell/engine/lineReader.h"
#include "terminal/diagnostics.h"
#include "terminal/interrupts.h"
#include "terminal/terminal.h"

namespace app::shell {

namespace {

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
    return "kiv " + printable(Kiv_v4::PathString::string(session.current()->path())) +
           (session.isInStep() ? " (step)> " : "> ");
}

/// Runs a line that was typed, or leaves the shell where there was none any more.
void obey(Session& session, const std::optional<std::string>& line)
{
    if (!line) {
        session.output().line("");
        return session.quit();
    }
    Interrupts::forget();
    try {
        runLine(session, *line);
    } catch (const std::exception& error) {
        report(session, error.what());
    }
}

void converse(Session& session)
{
    const Interrupts interrupts;
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

} // namespace

int shellCommand(const ShellOptions& options, Output& output)
{
    Session session(output);
    const auto isInteractive = !options.commands && isTerminal(STDIN_FILENO) && output.isTerminal();
    const auto notMounted = fill(session.scene(), {}, options.files);
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

} // namespace app::shell
