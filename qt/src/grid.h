#pragma once

#include <QString>
#include <optional>

namespace Kiv_v4::qt::detail {

// The cells of the grid, each with a side of a power of ten: in metres if the length of a scene
// unit is known, in scene units otherwise.

/// The side, in scene units, of a cell that is well seen at that distance.
[[nodiscard]] double cellFor(double distance, std::optional<double> unit);

/// Says how long the side of a cell is.
[[nodiscard]] QString cellText(double cell, std::optional<double> unit);

} // namespace Kiv_v4::qt::detail
