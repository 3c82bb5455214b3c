#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <type_traits>

#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"

using namespace Kiv_v4;

namespace {

template <std::size_t N>
using Matrix = TypedSquareMatrixN<double, N>;

// One way to the elements of all three.
template <class T, std::size_t N>
T& last(TypedVectorN<T, N>& v)
{
    return v.vector[N - 1];
}
template <class T, std::size_t N>
T& last(TypedColorN<T, N>& c)
{
    return c.color[N - 1];
}
template <class T, std::size_t N>
T& last(TypedSquareMatrixN<T, N>& m)
{
    return m.matrix[N - 1][N - 1];
}

template <std::size_t N>
Matrix<N> textbookProduct(const Matrix<N>& left, const Matrix<N>& right)
{
    Matrix<N> product;
    for (std::size_t i = 0; i < N; ++i) {
        for (std::size_t j = 0; j < N; ++j) {
            auto& sum = product.matrix[i][j];
            for (std::size_t k = 0; k < N; ++k) {
                sum += left.matrix[i][k] * right.matrix[k][j];
            }
        }
    }
    return product;
}

template <std::size_t N>
void expectTextbookProducts()
{
    std::mt19937 random(1812);
    std::uniform_int_distribution<int> exponent(-520, 400); // from denormal to huge products
    const auto number = [&] {
        const auto digits = static_cast<double>(random()) - 2147483648.0;
        return random() % 3 ? std::ldexp(digits, exponent(random)) : std::copysign(0.0, digits);
    };
    for (int round = 0; round < 2'000; ++round) {
        Matrix<N> left;
        Matrix<N> right;
        for (std::size_t i = 0; i < N * N; ++i) {
            left.matrix[i / N][i % N] = number();
            right.matrix[i / N][i % N] = number();
        }
        using Bits = std::array<std::uint64_t, N * N>;
        const auto product = left * right;
        const auto expected = textbookProduct(left, right);
        ASSERT_EQ(std::bit_cast<Bits>(product), std::bit_cast<Bits>(expected)) << "round " << round;
    }
}

} // namespace

template <class X>
class NumericType : public testing::Test
{};
using NumericTypes =
    testing::Types<TypedVectorN<int, 2>, TypedVectorN<int, 3>, TypedVectorN<int, 4>,
                   TypedVectorN<float, 2>, TypedVectorN<float, 3>, TypedVectorN<float, 4>,
                   TypedVectorN<double, 2>, TypedVectorN<double, 3>, TypedVectorN<double, 4>,
                   TypedColorN<float, 3>, TypedColorN<float, 4>, Matrix<3>, Matrix<4>>;
TYPED_TEST_SUITE(NumericType, NumericTypes);

TYPED_TEST(NumericType, IsAPlainZeroValueComparedExactlyDownToItsLastElement)
{
    static_assert(std::is_trivially_copyable_v<TypeParam>);
    TypeParam a;
    TypeParam b;
    EXPECT_EQ(last(a), 0);
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);

    using T = std::remove_reference_t<decltype(last(a))>;
    last(b) = std::is_integral_v<T> ? T(1) : std::numeric_limits<T>::denorm_min();
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);

    if constexpr (std::is_floating_point_v<T>) {
        last(b) = T(-0.0);
        EXPECT_TRUE(a == b);
        last(b) = std::numeric_limits<T>::quiet_NaN();
        EXPECT_FALSE(b == b);
        EXPECT_TRUE(b != b);
    }
}

TEST(Matrix, ProductIsBitForBitTheTextbookSum)
{
    expectTextbookProducts<3>();
    expectTextbookProducts<4>();
}
