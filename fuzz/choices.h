#pragma once

#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>

/// Numbers that the fuzzer chooses, in the manner of the tests' `Random`. Zeros once the data is
/// used up.
class Choices : public FuzzedDataProvider
{
public:
    using FuzzedDataProvider::FuzzedDataProvider;

    [[nodiscard]] bool left() { return remaining_bytes() != 0; }

    /// A number from 0 up to, but not including, `bound`.
    std::size_t below(std::size_t bound)
    {
        return ConsumeIntegralInRange<std::size_t>(0, bound - 1);
    }
};
