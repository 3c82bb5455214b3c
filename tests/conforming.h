#pragma once

#include <gtest/gtest.h>

#include "kiv/conformance/conformance.h"
#include "kiv/conformance/failingAllocations.h"

namespace test {

/// Holds the candidate against all contracts, with several seeds.
inline void expectConformance(const Kiv_v4::conformance::Candidate& candidate)
{
    for (const std::uint64_t seed : {1, 2}) {
        Kiv_v4::conformance::Options options;
        options.seed = seed;
        options.allocationFaults = Kiv_v4::conformance::failingAllocations();
        const auto report = Kiv_v4::conformance::check(candidate, options);
        EXPECT_TRUE(report.passed()) << Kiv_v4::conformance::text(report);
    }
}

} // namespace test
