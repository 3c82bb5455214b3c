#pragma once

#include <chrono>
#include <cstddef>

namespace Kiv_v4::document {

/// The limits within which a child process must read a scene file before the host reads it; see
/// `Workspace::setIsolation`.
struct Isolation
{
    /// The longest time, by the clock and of the processor; at least a second.
    std::chrono::seconds time{60};

    /// The bytes of address space that the child may add to those of the host.
    std::size_t memory = std::size_t{4} << 30U;
};

} // namespace Kiv_v4::document
