#include "kiv/document/workspace.h"

#include "cli/filling.h"
#include "cli/programCommand.h"
#include "report/inspectionReport.h"

namespace app {

namespace {

struct InspectOptions
{
    SceneWishes scene;
    bool json = false;
};

int inspect(const InspectOptions& options, const Context& context)
{
    Kiv_v4::document::Workspace scene;
    const auto failed = fill(scene, options.scene, context.plugins);
    writeInspection(scene, options.json, context.output);
    return failed == 0 ? kSuccess : kFailure;
}

} // namespace

Command defineInspect(CLI::App& program)
{
    const auto options = std::make_shared<InspectOptions>();
    auto& syntax = *program.add_subcommand("inspect", "Tell what the library holds in memory");
    syntax.footer(
        "Tells the run-times with their handlers and gateways, mounts, observers, and what "
        "was left behind, for reports of faults.\n"
        "Example: kiv --plugin props.so inspect --json > report.json");
    defineScene(syntax, options->scene);
    syntax.add_flag("--json", options->json, "Print a JSON object");
    return {&syntax, [options](const Context& context) { return inspect(*options, context); }};
}

} // namespace app
