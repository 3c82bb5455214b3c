#pragma once

#include "kiv/rtid.h"

namespace Kiv_v4::detail {

/// Takes back all that `PathString` was told of the run-time: its separators, however often and by
/// whomever registered, and its single-segment function.
void forgetNotation(Rtid runTimeId) noexcept;

} // namespace Kiv_v4::detail
