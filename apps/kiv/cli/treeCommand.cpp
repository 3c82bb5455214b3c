#include "cli/treeCommand.h"

#include "kiv/document/workspace.h"

#include "cli/filling.h"
#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

int treeCommand(const TreeOptions& options, Output& output)
{
    document::Workspace scene;
    const auto failed = fill(scene, options.itemsToMake, options.files);
    if (failed < options.itemsToMake.size() + options.files.size() || !options.topItems.empty()) {
        writeTree(scene, rootsOf(scene, options.topItems), options.filter, options.form, output);
    }
    return failed == 0 ? kSuccess : kFailure;
}

} // namespace app
