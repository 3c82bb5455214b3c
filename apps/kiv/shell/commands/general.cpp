#include <algorithm>
#include <stdexcept>
#include <string>

#include "report/inspectionReport.h"
#include "shell/commands/numbers.h"
#include "shell/engine/commandTable.h"
#include "shell/engine/script.h"
#include "terminal/terminal.h"

namespace app::shell {

namespace {

std::string callOf(const Command& command)
{
    return std::string(command.name) + (command.usage.empty() ? "" : " ") +
           std::string(command.usage);
}

void describe(const Session& session, const Command& command)
{
    session.output().line(callOf(command));
    session.output().line("  " + std::string(command.summary));
}

void listCommands(const Session& session)
{
    std::size_t width = 0;
    for (const auto& kind : commandKinds()) {
        for (const auto& command : kind.commands) {
            width = std::max(width, command.name.size());
        }
    }
    for (const auto& kind : commandKinds()) {
        session.output().line(kind.title);
        for (const auto& command : kind.commands) {
            session.output().line("  " + padded(command.name, width) + "  " +
                                  std::string(command.summary));
        }
    }
    session.output().line("help COMMAND tells its arguments.");
}

void help(Session& session, const Arguments& arguments)
{
    if (arguments.size() == 0) {
        return listCommands(session);
    }
    const auto* command = commandNamed(arguments[0]);
    if (!command) {
        throw std::runtime_error(unknownCommand(arguments[0]));
    }
    describe(session, *command);
}

void watch(Session& session, const Arguments& arguments)
{
    if (const auto* const file = arguments.value("--record")) {
        session.record(*file);
    } else if (arguments.size() == 0) {
        throw std::runtime_error("on, off or --record=FILE is required");
    }
    if (arguments.size() > 0) {
        const auto isOn = valueOf<bool>(arguments[0]);
        session.watch(isOn);
        if (!isOn) {
            session.endRecording();
        }
    }
}

void inspect(Session& session, const Arguments& arguments)
{
    writeInspection(session.scene(), arguments.has("--json"), session.output());
}

void runScript(Session& session, const Arguments& arguments)
{
    runFile(session, arguments[0]);
}

void quit(Session& session, const Arguments&)
{
    session.quit();
}

constexpr Command kCommands[] = {
    {"watch", "[on|off] [--record=FILE]",
     "Print every notification as a line; with --record, write these, the commands and the undo "
     "history to a file as lines of JSON, which kiv replay does again. off ends both.",
     watch},
    {"inspect", "[--json]",
     "Tell what the library holds: run-times, gateways, mounts, observers, leftovers.", inspect},
    {"run", "FILE",
     "Run the commands of a file, without --echo and --keep-going: the first error ends it.",
     runScript},
    {"help", "[COMMAND]", "List the commands, or tell how to call one.", help},
    {"quit", "", "Leave the shell.", quit},
    {"exit", "", "The same as quit.", quit},
};

} // namespace

CommandKind general()
{
    return {"The shell", kCommands};
}

} // namespace app::shell
