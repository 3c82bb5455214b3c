#pragma once

#include "kiv/conformance/conformance.h"

namespace Kiv_v4::conformance {

/// For `Options::allocationFaults`. A program that links `kiv::failingAllocations` and calls this
/// has its `operator new` replaced, for itself and for all that it loads, by one that can be told
/// to fail and that takes memory from `std::malloc`.
[[nodiscard]] AllocationFaults failingAllocations();

} // namespace Kiv_v4::conformance
