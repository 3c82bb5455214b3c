#include "kiv/runTimeMgr.h"

#include "cli/plugins.h"
#include "cli/programCommand.h"
#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// A line for each plug-in.
int list(const Plugins& plugins, Output& output)
{
    for (const auto& plugin : plugins.all()) {
        std::string runTimes;
        for (const auto id : plugin.runTimes) {
            runTimes += (runTimes.empty() ? "" : ",") + RunTimeMgr::instance().getName(id);
        }
        output.line(plugin.name + '\t' + std::to_string(plugin.interfaceMajor) + '.' +
                    std::to_string(plugin.interfaceMinor) + '\t' + runTimes + '\t' + plugin.file);
    }
    return kSuccess;
}

} // namespace

Command definePlugins(CLI::App& program)
{
    auto& syntax =
        *program.add_subcommand("plugins", "List the plug-ins: name, interface, run-times, file");
    syntax.footer("Example: kiv --plugin props.so plugins");
    return {&syntax, [](const Context& context) { return list(context.plugins, context.output); }};
}

} // namespace app
