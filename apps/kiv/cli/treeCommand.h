#pragma once

#include <string>
#include <vector>

#include "kiv/host/outline.h"

#include "report/treeReport.h"
#include "terminal/output.h"

namespace app {

/// `kiv tree`: what the user asked for.
struct TreeOptions
{
    std::vector<std::string> files;
    std::vector<std::string> itemsToMake; ///< As `TYPE:PATH`.
    Kiv_v4::SceneItemList topItems;       ///< Of scenes beside that of the files.
    Kiv_v4::host::OutlineFilter filter;
    TreeForm form = TreeForm::Drawing;
};

/// Makes the items, mounts the files and writes the outliner tree of the whole scene. What cannot
/// be made or read gets a complaint, and the rest is shown. Gives the exit status.
[[nodiscard]] int treeCommand(const TreeOptions& options, Output& output);

} // namespace app
