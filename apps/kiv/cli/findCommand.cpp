#include "cli/findCommand.h"

#include "kiv/document/workspace.h"

#include "cli/filling.h"
#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

int findCommand(const FindOptions& options, Output& output)
{
    document::Workspace scene;
    const auto failed = fill(scene, options.itemsToMake, options.files);
    if (failed == options.itemsToMake.size() + options.files.size() && options.topItems.empty()) {
        return kFailure;
    }
    const auto count =
        find(scene, rootsOf(scene, options.topItems), options.criteria, options.form, output);
    return failed == 0 && count > 0 ? kSuccess : kFailure;
}

} // namespace app
