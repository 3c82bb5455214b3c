#pragma once

#include <optional>

#include "kiv/transform3dRead.h"

namespace app::shell {

/// The matrix whose product with `matrix`, in either order, is the identity to rounding; none when
/// the matrix is singular to rounding or holds something that is no finite number.
[[nodiscard]] std::optional<Kiv_v4::Matrix4d> inverse(const Kiv_v4::Matrix4d& matrix);

} // namespace app::shell
