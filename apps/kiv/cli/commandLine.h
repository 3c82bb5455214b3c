#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kiv/conformance/conformance.h"

namespace app {

/// What the program has from the process that it runs in. All of it may be missing.
struct Surroundings
{
    Kiv_v4::conformance::AllocationFaults allocationFaults = {};

    /// Opens a run-time that is written in Python, by `module:function` or another source. Without
    /// it, the program becomes Python when it is asked for one.
    std::function<Kiv_v4::conformance::Running(const std::string& source)> openInPython = {};

    /// Whether `openInPython` opens a word that stands for a scene file.
    std::function<bool(const std::string& word)> isForPython = {};

    /// Shows the window and returns the exit status. Without it, the program becomes `kiv-window`.
    std::function<int(const std::vector<std::string>& words)> showWindow = {};
};

/// Runs the program as the command line tells. Returns the exit status; ends the process where an
/// interrupt from the keyboard ended the work.
int runProgram(int argc, char** argv, const Surroundings& surroundings);

} // namespace app
