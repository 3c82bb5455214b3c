#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "kiv/document/workspace.h"
#include "kiv/sceneItem.h"

#include "report/criteria.h"
#include "terminal/output.h"

namespace app {

enum class FindForm { Table, Paths, JsonText };

/// Told of one item that was found.
using Found = std::function<void(const Kiv_v4::SceneItem::Ptr&)>;

/// Writes the items at and under `roots` that are found, tells of each, and returns their number.
/// With several files in the scene, the file of each is told, too. When nothing is found, complains
/// of names that are wanted and that nothing there has.
std::size_t find(const Kiv_v4::document::Workspace& scene, const Kiv_v4::SceneItemList& roots,
                 const Criteria& criteria, FindForm form, Output& output, const Found& found = {});

} // namespace app
