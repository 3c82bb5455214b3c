#include "cli/showCommand.h"

#include <exception>

#include "kiv/document/workspace.h"

#include "cli/filling.h"
#include "report/itemReport.h"
#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

int showCommand(const ShowOptions& options, Output& output)
{
    document::Workspace scene;
    const auto notMade = fill(scene, options.itemsToMake, {});
    auto gateway = scene.root()->path();
    try {
        if (!options.file.empty()) {
            gateway = scene.mount(options.file);
        }
    } catch (const std::exception& error) {
        complain(options.file, error.what());
        return kFailure;
    }
    const auto item = scene.item(options.path, gateway);
    if (!item) {
        complain(options.path, "no such item");
        return kFailure;
    }
    const auto isComplete = show(scene, item, options.path, options.json, output);
    return isComplete && notMade == 0 ? kSuccess : kFailure;
}

} // namespace app
