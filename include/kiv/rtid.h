#pragma once

#include <cstdint>

namespace Kiv_v4 {

/// Names a run-time (data model) in this process. The registry assigns ids from 1 upward and never
/// assigns one twice; 0 means no run-time.
using Rtid = std::uint32_t;

} // namespace Kiv_v4
