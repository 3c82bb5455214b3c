// The product of two matrices, beside the textbook loop and two libraries of the field.

#include <array>
#include <benchmark/benchmark.h>
#include <cstddef>

#include "kiv/typedSquareMatrixN.h"

#if __has_include(<Imath/ImathMatrix.h>)
#define KIV_BENCH_IMATH
#include <Imath/ImathMatrix.h>
#endif
#if __has_include(<glm/mat4x4.hpp>)
#define KIV_BENCH_GLM
#include <glm/mat4x4.hpp>
#endif

namespace {

template <std::size_t N>
using Matrix = Kiv_v4::TypedSquareMatrixN<double, N>;

double element(std::size_t row, std::size_t column)
{
    return 0.25 + 0.5 * static_cast<double>(row) - 0.125 * static_cast<double>(column);
}

template <std::size_t N>
Matrix<N> sample()
{
    Matrix<N> m;
    for (std::size_t i = 0; i < N; ++i) {
        for (std::size_t j = 0; j < N; ++j) {
            m.matrix[i][j] = element(i, j);
        }
    }
    return m;
}

template <std::size_t N>
struct TextbookMatrix
{
    std::array<std::array<double, N>, N> matrix{};

    TextbookMatrix operator*(const TextbookMatrix& other) const
    {
        TextbookMatrix product;
        for (std::size_t i = 0; i < N; ++i) {
            for (std::size_t j = 0; j < N; ++j) {
                auto sum = 0.0;
                for (std::size_t k = 0; k < N; ++k) {
                    sum += matrix[i][k] * other.matrix[k][j];
                }
                product.matrix[i][j] = sum;
            }
        }
        return product;
    }
};

template <class M>
void multiply(benchmark::State& state, M left, M right)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(left);
        benchmark::DoNotOptimize(right);
        auto product = left * right;
        benchmark::DoNotOptimize(product);
    }
}

const auto four = sample<4>();
const auto three = sample<3>();

BENCHMARK_CAPTURE(multiply, ours4, four, four)->Name("4x4 product/kiv");
BENCHMARK_CAPTURE(multiply, loop4, TextbookMatrix<4>{four.matrix}, TextbookMatrix<4>{four.matrix})
    ->Name("4x4 product/textbook loop");
BENCHMARK_CAPTURE(multiply, ours3, three, three)->Name("3x3 product/kiv");
BENCHMARK_CAPTURE(multiply, loop3, TextbookMatrix<3>{three.matrix}, TextbookMatrix<3>{three.matrix})
    ->Name("3x3 product/textbook loop");

#ifdef KIV_BENCH_IMATH
Imath::M44d imath4()
{
    Imath::M44d m;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            m[i][j] = element(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
        }
    }
    return m;
}

Imath::M33d imath3()
{
    Imath::M33d m;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            m[i][j] = element(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
        }
    }
    return m;
}

BENCHMARK_CAPTURE(multiply, imath4, imath4(), imath4())->Name("4x4 product/Imath");
BENCHMARK_CAPTURE(multiply, imath3, imath3(), imath3())->Name("3x3 product/Imath");
#endif

#ifdef KIV_BENCH_GLM
template <class M>
M glmSample()
{
    M m;
    for (int i = 0; i < M::length(); ++i) {
        for (int j = 0; j < M::length(); ++j) {
            m[i][j] = element(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
        }
    }
    return m;
}

BENCHMARK_CAPTURE(multiply, glm4, glmSample<glm::dmat4>(), glmSample<glm::dmat4>())
    ->Name("4x4 product/glm");
BENCHMARK_CAPTURE(multiply, glm3, glmSample<glm::dmat3>(), glmSample<glm::dmat3>())
    ->Name("3x3 product/glm");
#endif

} // namespace

BENCHMARK_MAIN();
