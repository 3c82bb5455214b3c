#pragma once

#include <string>

#include "output.h"

namespace app {

/// `kiv show`: what the user asked for.
struct ShowOptions
{
    std::string file;
    std::string path;
    bool json = false;
};

/// Mounts the file and writes what is known of one item. Gives the exit status.
[[nodiscard]] int showCommand(const ShowOptions& options, Output& output);

} // namespace app
