#include <stdexcept>
#include <string>

#include "shell/commands/numbers.h"
#include "shell/engine/commandTable.h"
#include "terminal/terminal.h"

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

/// How many steps the argument says, one without it; at most `nbLeft`.
std::size_t nbSteps(const Session& session, const Arguments& arguments, std::size_t nbLeft,
                    const std::string& verb)
{
    if (session.isInStep()) {
        throw std::runtime_error("a step is open: end it first");
    }
    const auto count = arguments.size() > 0 ? valueOf<int>(arguments[0]) : 1;
    if (count < 1) {
        throw std::runtime_error("'" + arguments[0] + "' is less than 1");
    }
    const auto wanted = static_cast<std::size_t>(count);
    if (wanted > nbLeft) {
        throw std::runtime_error(nbLeft == 0 ? "nothing is left to " + verb
                                             : "only " + std::to_string(nbLeft) +
                                                   (nbLeft == 1 ? " step is" : " steps are") +
                                                   " left to " + verb);
    }
    return wanted;
}

void undo(Session& session, const Arguments& arguments)
{
    auto& history = session.history();
    for (auto left = nbSteps(session, arguments, history.nbDone(), "undo"); left > 0; --left) {
        history.undo();
    }
}

void redo(Session& session, const Arguments& arguments)
{
    auto& history = session.history();
    const auto nbUndone = history.entries().size() - history.nbDone();
    for (auto left = nbSteps(session, arguments, nbUndone, "redo"); left > 0; --left) {
        history.redo();
    }
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

constexpr Command kUndoing[] = {
    {"undo", "[NUMBER]", "Undo the last step, or several.", "undo 2", undo},
    {"redo", "[NUMBER]", "Redo the step that was undone last, or several.", "redo", redo},
    {"history", "", "List the steps, oldest first.", "history", history},
    {"begin", "[NAME]", "Make one step of all edits up to the matching end.", "begin 'tidy up'",
     begin},
    {"end", "", "End the step that was begun last.", "end", end},
};

} // namespace

CommandKind undoing()
{
    return {"Undoing", kUndoing};
}

} // namespace app::shell
