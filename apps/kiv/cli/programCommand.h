#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "terminal/output.h"

namespace app {

class Plugins;
struct Surroundings;

/// What every command works with. The plug-ins outlive all that is known of their items.
struct Context
{
    Plugins& plugins;
    Output& output;
    const Surroundings& surroundings;
    const std::vector<std::string>& pythonSources; ///< As the command line names them.
};

/// A command of the program: what its help, its manual page and the completions are made of, and
/// what it does.
struct Command
{
    CLI::App* syntax;

    /// Gives the exit status; what it throws is complained of.
    std::function<int(const Context&)> run;
    bool usesPlugins = true; ///< Whether the plug-ins are loaded first.
};

/// Throw it for arguments that make no sense together.
class WrongUsage : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// The commands, each defined in a file of its own, in the order of the help.

[[nodiscard]] Command defineInfo(CLI::App& program);
[[nodiscard]] Command defineTree(CLI::App& program);
[[nodiscard]] Command defineShow(CLI::App& program);
[[nodiscard]] Command defineFind(CLI::App& program);
[[nodiscard]] Command defineDiff(CLI::App& program);
[[nodiscard]] Command defineShell(CLI::App& program);
[[nodiscard]] Command defineReplay(CLI::App& program);
[[nodiscard]] Command defineInspect(CLI::App& program);
[[nodiscard]] Command defineCheck(CLI::App& program);
[[nodiscard]] Command definePlugins(CLI::App& program);
[[nodiscard]] Command defineWindow(CLI::App& program);
[[nodiscard]] Command defineCompletion(CLI::App& program);
[[nodiscard]] Command defineManual(CLI::App& program); ///< Hidden: packages ask for it.

} // namespace app
