#pragma once

#include <string>
#include <vector>

#include "mounting.h"
#include "output.h"

namespace app {

/// `kiv show`: what the user asked for.
struct ShowOptions
{
    std::string file;
    std::string path;
    std::vector<std::string> itemsToMake; ///< As `TYPE:PATH`.
    bool json = false;
};

/// Writes all that one item offers. What one interface fails to tell gets a complaint that begins
/// with `name`, and the rest is shown; false then.
bool show(const Mounting& scene, const Kiv_v4::SceneItem::Ptr& item, const std::string& name,
          bool asJson, Output& output);

/// Makes the items, mounts the file and writes all that one item offers through the library's
/// interfaces. Gives the exit status.
[[nodiscard]] int showCommand(const ShowOptions& options, Output& output);

} // namespace app
