#pragma once

#include <istream>
#include <string>
#include <string_view>

#include "shell/engine/session.h"

namespace app::shell {

/// Runs the commands of a line, until one throws or leaves the shell.
void runLine(Session& session, std::string_view line);

/// How a script is run.
struct ScriptStyle
{
    bool keepsGoing = false; ///< Complain of errors and go on.
    bool echoes = false;     ///< Print each command before it runs.
};

/// Runs the lines until there are no more or the shell is left. Gives false when there were errors
/// to go on after; otherwise an error throws `std::runtime_error`, "line N: reason".
bool runLines(Session& session, std::istream& lines, const ScriptStyle& style = {});

/// Runs a file's lines; throws `std::runtime_error` when it cannot be read, "FILE: line N: reason"
/// for an error in it, and when it is running already.
void runFile(Session& session, const std::string& file);

/// Complains, behind what was printed so far.
void report(const Session& session, const std::string& error);

} // namespace app::shell
