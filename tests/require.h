#pragma once

#include <stdexcept>

namespace test {

/// Ends a test, or a fuzzing run, if a condition is false. For checks that both kinds of programs
/// share.
inline void require(bool condition, const char* complaint)
{
    if (!condition) {
        throw std::logic_error(complaint);
    }
}

} // namespace test
