#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

#include "kiv/export.h"

namespace Kiv_v4 {

/// A vector of 2 to 4 elements of type `int`, `float` or `double`: a plain value, its elements
/// stored inline and public, all 0 at first.
template <class T, std::size_t N>
class KIV_EXPORT TypedVectorN // exported so that what others instantiate with it can be
{
    static_assert(std::is_same_v<T, int> || std::is_same_v<T, float> || std::is_same_v<T, double>,
                  "the elements of a vector are int, float or double");
    static_assert(N >= 2 && N <= 4, "a vector has 2, 3 or 4 elements");

public:
    constexpr TypedVectorN() noexcept = default;
    constexpr TypedVectorN(std::array<T, N>&& elements) noexcept : vector(elements) {}

    /// The first two elements. The others are `vector[2]` and `vector[3]`.
    [[nodiscard]] constexpr T x() const noexcept { return vector[0]; }
    [[nodiscard]] constexpr T y() const noexcept { return vector[1]; }

    /// Compares exactly, element by element: NaN equals nothing, -0 equals +0.
    constexpr bool operator==(const TypedVectorN& other) const noexcept
    {
        return vector == other.vector;
    }
    constexpr bool operator!=(const TypedVectorN& other) const noexcept
    {
        return !(*this == other);
    }

    /// All elements.
    std::array<T, N> vector{};
};

} // namespace Kiv_v4
