#pragma once

#include "kiv/document/workspace.h"
#include "kiv/host/outline.h"
#include "kiv/sceneItem.h"

#include "terminal/output.h"

namespace app {

enum class TreeForm { Drawing, Paths, JsonText };

/// Writes the trees of the items at and under `roots` that the filter lets through. Complains when
/// the filter wants a type that no item there has, with those that there are.
void writeTree(const Kiv_v4::document::Workspace& scene, const Kiv_v4::SceneItemList& roots,
               const Kiv_v4::host::OutlineFilter& filter, TreeForm form, Output& output);

} // namespace app
