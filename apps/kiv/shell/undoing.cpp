#include <stdexcept>
#include <string>

#include "command.h"
#include "numbers.h"
#include "terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

void begin(Session& session, const Arguments& arguments)
{
    session.beginStep(arguments.size() > 0 ? arguments[0] : "edits");
}

void end(Session& session, const Arguments&)
{
    session.endStep();
}

/// Goes through the history as far as the argument says, one step without it.
void steps(const Session& session, const Arguments& arguments, bool (host::UndoHistory::*step)(),
           const std::string& none)
{
    if (session.isInStep()) {
        throw std::runtime_error("a step is open: end it first");
    }
    const auto count = arguments.size() > 0 ? valueOf<int>(arguments[0]) : 1;
    if (count < 1) {
        throw std::runtime_error("'" + arguments[0] + "' is less than 1");
    }
    for (int i = 0; i < count; ++i) {
        if (!(session.history().*step)()) {
            throw std::runtime_error(none);
        }
    }
}

void undo(Session& session, const Arguments& arguments)
{
    steps(session, arguments, &host::UndoHistory::undo, "nothing is left to undo");
}

void redo(Session& session, const Arguments& arguments)
{
    steps(session, arguments, &host::UndoHistory::redo, "nothing is left to redo");
}

void history(Session& session, const Arguments&)
{
    const auto nbDone = session.history().nbDone();
    std::size_t number = 0;
    for (const auto& entry : session.history().entries()) {
        const auto* mark = number++ < nbDone ? "  " : "  (undone) ";
        session.output().line(std::to_string(number) + mark + printable(entry));
    }
}

constexpr Command kCommands[] = {
    {"undo", "[NUMBER]", "Undo the last step, or several.", undo},
    {"redo", "[NUMBER]", "Redo the step that was undone last, or several.", redo},
    {"history", "", "List the steps, oldest first.", history},
    {"begin", "[NAME]", "Make one step of all edits up to the matching end.", begin},
    {"end", "", "End the step that was begun last.", end},
};

} // namespace

CommandKind undoing()
{
    return {"Undoing", kCommands};
}

} // namespace app::shell
