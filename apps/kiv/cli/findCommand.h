#pragma once

#include <string>
#include <vector>

#include "report/itemSearch.h"
#include "terminal/output.h"

namespace app {

/// `kiv find`: what the user asked for.
struct FindOptions
{
    std::vector<std::string> files;
    std::vector<std::string> itemsToMake; ///< As `TYPE:PATH`.
    Kiv_v4::SceneItemList topItems;       ///< Of scenes beside that of the files.
    Criteria criteria;
    FindForm form = FindForm::Table;
};

/// Makes the items, mounts the files and writes what is found in the whole scene. What cannot be
/// made or read gets a complaint, and the rest is searched. Gives the exit status: a failure too
/// when nothing is found.
[[nodiscard]] int findCommand(const FindOptions& options, Output& output);

} // namespace app
