#pragma once

#include <string>
#include <vector>

#include "terminal/output.h"

namespace app {

/// `kiv show`: what the user asked for.
struct ShowOptions
{
    std::string file; ///< Empty for an item that no file is mounted for.
    std::string path;
    std::vector<std::string> itemsToMake; ///< As `TYPE:PATH`.
    bool json = false;
};

/// Makes the items, mounts the file and writes all that one item offers through the library's
/// interfaces. Gives the exit status.
[[nodiscard]] int showCommand(const ShowOptions& options, Output& output);

} // namespace app
