#pragma once

#include <gtest/gtest.h>

#include "kiv/conformance/conformance.h"

namespace test {

/// Checks the candidate against all contracts, with several seeds; with `faults` also while
/// allocations fail.
inline void expectConformance(const Kiv_v4::conformance::Candidate& candidate,
                              const Kiv_v4::conformance::AllocationFaults& faults)
{
    for (std::uint64_t seed = 1; seed <= 2; ++seed) {
        Kiv_v4::conformance::Options options;
        options.seed = seed;
        options.allocationFaults = faults;
        const auto report = Kiv_v4::conformance::check(candidate, options);
        EXPECT_TRUE(report.passed()) << Kiv_v4::conformance::text(report);
    }
}

} // namespace test
