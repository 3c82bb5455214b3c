#pragma once

#include "kiv/document/workspace.h"

#include "terminal/output.h"

namespace app {

/// Writes what the library holds for the process, with the mounts of the scene.
void writeInspection(const Kiv_v4::document::Workspace& scene, bool asJson, Output& output);

} // namespace app
