#pragma once

#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "kiv/export.h"

namespace Kiv_v4 {

/// A square matrix of 3 or 4 rows of `double`s: a plain value, its elements stored inline and
/// public. The first index is the row.
///
/// A new matrix is zero, not the identity.
template <class T, std::size_t N>
class KIV_EXPORT TypedSquareMatrixN // exported so that what others instantiate with it can be
{
    static_assert(std::is_same_v<T, double>, "the elements of a matrix are double");
    static_assert(N == 3 || N == 4, "a matrix has 3 or 4 rows");

public:
    constexpr TypedSquareMatrixN() noexcept = default;
    constexpr TypedSquareMatrixN(std::array<std::array<T, N>, N>&& rows) noexcept : matrix(rows) {}

    /// Compares exactly, element by element: NaN equals nothing, -0 equals +0.
    constexpr bool operator==(const TypedSquareMatrixN& other) const noexcept
    {
        return matrix == other.matrix;
    }
    constexpr bool operator!=(const TypedSquareMatrixN& other) const noexcept
    {
        return !(*this == other);
    }

    /// The matrix product with this matrix on the left. Each element is summed from 0.0 in
    /// increasing order of the inner index.
    constexpr TypedSquareMatrixN operator*(const TypedSquareMatrixN& other) const noexcept
    {
        return product(other, std::make_index_sequence<N>());
    }

    /// The elements, by row and column.
    std::array<std::array<T, N>, N> matrix{};

private:
    // Unrolled by hand, rows of sums side by side: most compilers vectorise this at -O2, and few of
    // them vectorise a loop there.
    template <std::size_t... Index>
    constexpr TypedSquareMatrixN product(const TypedSquareMatrixN& other,
                                         std::index_sequence<Index...> all) const noexcept
    {
        return {{rowProduct(matrix[Index], other, all)...}};
    }

    template <std::size_t... Column>
    static constexpr std::array<T, N> rowProduct(const std::array<T, N>& row,
                                                 const TypedSquareMatrixN& other,
                                                 std::index_sequence<Column...> all) noexcept
    {
        return {elementProduct(row, other, Column, all)...};
    }

    template <std::size_t... K>
    static constexpr T elementProduct(const std::array<T, N>& row, const TypedSquareMatrixN& other,
                                      std::size_t column, std::index_sequence<K...>) noexcept
    {
        T sum{};
        ((sum += row[K] * other.matrix[K][column]), ...);
        return sum;
    }
};

} // namespace Kiv_v4
