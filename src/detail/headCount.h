#pragma once

#include <cstddef>
#include <cstdint>

namespace Kiv_v4::detail {

/// How many of `size` components `head(n)` keeps: `n`, or all but `-n` for a negative `n`; 0 if `n`
/// is not valid, since every valid `n` keeps at least one.
[[nodiscard]] constexpr std::size_t headCount(int n, std::size_t size) noexcept
{
    const auto count = std::int64_t{n};
    const auto available = static_cast<std::int64_t>(size);
    if (count > available || count <= -available) {
        return 0;
    }
    return static_cast<std::size_t>(count > 0 ? count : count == 0 ? 0 : available + count);
}

} // namespace Kiv_v4::detail
