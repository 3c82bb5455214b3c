#pragma once

#include "kiv/conformance/conformance.h"

namespace Kiv_v4::conformance {

/// Returns the functions for `Options::allocationFaults`. If a program links
/// `kiv::failingAllocations` and calls this, its `operator new`, also for everything that it loads,
/// is replaced by one that takes memory from `std::malloc` and can be made to fail.
[[nodiscard]] AllocationFaults failingAllocations();

} // namespace Kiv_v4::conformance
