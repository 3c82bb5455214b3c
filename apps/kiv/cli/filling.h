#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kiv/document/workspace.h"

namespace app {

/// Makes the items, each given as `TYPE:PATH` with a parent that is there, and mounts the files.
/// Complains of those that cannot be made or read, and returns their number.
std::size_t fill(Kiv_v4::document::Workspace& scene, const std::vector<std::string>& itemsToMake,
                 const std::vector<std::string>& files);

/// The root of the scene, and after it the top items of others.
[[nodiscard]] Kiv_v4::SceneItemList rootsOf(const Kiv_v4::document::Workspace& scene,
                                            const Kiv_v4::SceneItemList& topItems);

} // namespace app
