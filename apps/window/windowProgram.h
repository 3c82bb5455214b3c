#pragma once

namespace window {

/// Runs the window as the command line tells, over the run-times that the process has, until it is
/// closed. Returns the exit code.
int runProgram(int argc, char** argv);

} // namespace window
