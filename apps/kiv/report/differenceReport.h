#pragma once

#include <vector>

#include "kiv/host/comparison.h"

#include "terminal/output.h"

namespace app {

/// Writes what differs between the trees at and under two items: a line for each difference and
/// their number, or a JSON array. Paths are told from those items on.
void writeDifferences(const std::vector<Kiv_v4::host::Difference>& differences,
                      const Kiv_v4::Path& before, const Kiv_v4::Path& after, bool asJson,
                      Output& output);

} // namespace app
