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

constexpr std::size_t kScreen = 80;

void describe(const Session& session, const Command& command)
{
    const std::string name(command.name);
    session.output().line(name + " " + wrapped(command.usage, kScreen, name.size() + 1));
    session.output().line("  " + wrapped(command.summary, kScreen, 2));
    session.output().line("  Example: " + std::string(command.example));
}

void list(const Session& session, const CommandKind& kind)
{
    std::string names;
    for (const auto& command : kind.commands) {
        names += (names.empty() ? "" : ", ") + std::string(command.name);
    }
    session.output().line(kind.title);
    session.output().line("  " + wrapped(names, kScreen, 2));
}

void help(Session& session, const Arguments& arguments)
{
    if (arguments.size() > 0) {
        const auto* command = commandNamed(arguments[0]);
        if (!command) {
            throw std::runtime_error(unknownCommand(arguments[0]));
        }
        return describe(session, *command);
    }
    for (const auto& kind : commandKinds()) {
        if (!arguments.has("--all")) {
            list(session, kind);
            continue;
        }
        for (const auto& command : kind.commands) {
            describe(session, command);
        }
    }
    session.output().line("help COMMAND tells what it does, help --all tells that of all.");
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

constexpr Command kGeneral[] = {
    {"watch", "[on|off] [--record=FILE]",
     "Print every notification as a line; with --record, write these, the commands and the undo "
     "history to a file as lines of JSON, which kiv replay does again. off ends both.",
     "watch on --record=session.json", watch},
    {"inspect", "[--json]",
     "Tell what the library holds: run-times, gateways, mounts, observers, leftovers.",
     "inspect --json", inspect},
    {"run", "FILE",
     "Run the commands of a file, without --echo and --keep-going: the first error ends it.",
     "run build.kiv", runScript},
    {"help", "[COMMAND] [--all]", "List the commands, or tell what one does, or all of them.",
     "help mount", help},
    {"quit", "", "Leave the shell.", "quit", quit},
    {"exit", "", "The same as quit.", "exit", quit},
};

} // namespace

CommandKind general()
{
    return {"The shell", kGeneral};
}

} // namespace app::shell
