#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

#include "kiv/export.h"

namespace Kiv_v4 {

/// A colour of 3 or 4 `float`s in the order red, green, blue, alpha: a plain value, its elements
/// stored inline and public, all 0 at first.
template <class T, std::size_t N>
class KIV_EXPORT TypedColorN // exported so that templates instantiated with it can be
{
    static_assert(std::is_same_v<T, float>, "the elements of a colour are float");
    static_assert(N == 3 || N == 4, "a colour has 3 or 4 elements");

public:
    constexpr TypedColorN() noexcept = default;
    constexpr TypedColorN(std::array<T, N>&& elements) noexcept : color(elements) {}

    /// The first three channels: red, green and blue.
    [[nodiscard]] constexpr T r() const noexcept { return color[0]; }
    [[nodiscard]] constexpr T g() const noexcept { return color[1]; }
    [[nodiscard]] constexpr T b() const noexcept { return color[2]; }

    /// Compares exactly, element by element: NaN equals nothing, -0 equals +0.
    constexpr bool operator==(const TypedColorN& other) const noexcept
    {
        return color == other.color;
    }
    constexpr bool operator!=(const TypedColorN& other) const noexcept { return !(*this == other); }

    /// All channels.
    std::array<T, N> color{};
};

} // namespace Kiv_v4
