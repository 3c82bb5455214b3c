#pragma once

#include <optional>
#include <string>
#include <vector>

#include "output.h"

namespace app {

/// `kiv find`: what the user asked for. An item is found when it meets every criterion.
struct FindOptions
{
    enum class Form { table, paths, json };

    std::vector<std::string> files;
    std::vector<std::string> itemsToMake; ///< As `TYPE:PATH`.
    bool cameras = false;
    bool lights = false;
    std::optional<std::string> nodeType;
    std::optional<std::string> name; ///< A pattern with * ? and [...] for the whole name.
    Form form = Form::table;

    [[nodiscard]] bool hasCriterion() const { return cameras || lights || nodeType || name; }
};

/// Makes the items, mounts the files and writes what is found in the whole scene. What cannot be
/// made or read gets a complaint, and the rest is searched. Gives the exit status: a failure too
/// when nothing is found.
[[nodiscard]] int findCommand(const FindOptions& options, Output& output);

} // namespace app
