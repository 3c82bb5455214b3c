#pragma once

#include <vector>

#include "kiv/host/outline.h"

#include "terminal/output.h"

namespace app {

/// Draws the rows as a tree, each with its node type, and with its run-time where that differs from
/// the parent's; then tells how many items there are of each run-time and node type.
void drawTree(const std::vector<Kiv_v4::host::OutlineRow>& rows, Output& output);

} // namespace app
