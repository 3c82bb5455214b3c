#pragma once

#include "kiv/rtid.h"

namespace Kiv_v4::detail {

/// Removes everything that `PathString` has of the run-time: its separators, however often they
/// were registered, and its single-segment function.
void forgetNotation(Rtid runTimeId) noexcept;

} // namespace Kiv_v4::detail
