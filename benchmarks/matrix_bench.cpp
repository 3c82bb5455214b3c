// The product of two matrices, beside the textbook loop and two libraries of the field.

#include <array>
#include <benchmark/benchmark.h>
#include <cstddef>

#include "kiv/typedSquareMatrixN.h"

#include "rows.h"

#if __has_include(<Imath/ImathMatrix.h>)
#define KIV_BENCH_IMATH
#include <Imath/ImathMatrix.h>
#endif
#if __has_include(<glm/mat4x4.hpp>)
#define KIV_BENCH_GLM
#include <glm/mat3x3.hpp>
#include <glm/mat4x4.hpp>
#endif

namespace {

using namespace kivBench;

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

#ifdef KIV_BENCH_IMATH
template <class M>
M imathSample()
{
    M m;
    for (unsigned i = 0; i < M::dimensions(); ++i) {
        for (unsigned j = 0; j < M::dimensions(); ++j) {
            m[static_cast<int>(i)][static_cast<int>(j)] = element(i, j);
        }
    }
    return m;
}
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
#endif

template <class M>
void addProduct(const char* operation, const char* who, M sampleMatrix)
{
    addRow(operation, "hot", who, [=](benchmark::State& state) {
        auto left = sampleMatrix;
        auto right = sampleMatrix;
        for (auto _ : state) {
            benchmark::DoNotOptimize(left);
            benchmark::DoNotOptimize(right);
            auto product = left * right;
            benchmark::DoNotOptimize(product);
        }
    });
}

[[maybe_unused]] const bool registered = [] {
    const auto three = "3x3 product";
    const auto four = "4x4 product";
    addProduct(three, "kiv", sample<3>());
    addProduct(four, "kiv", sample<4>());
    addProduct(three, "textbook loop", TextbookMatrix<3>{sample<3>().matrix});
    addProduct(four, "textbook loop", TextbookMatrix<4>{sample<4>().matrix});
#ifdef KIV_BENCH_IMATH
    addProduct(three, "Imath", imathSample<Imath::M33d>());
    addProduct(four, "Imath", imathSample<Imath::M44d>());
#endif
#ifdef KIV_BENCH_GLM
    addProduct(three, "glm", glmSample<glm::dmat3>());
    addProduct(four, "glm", glmSample<glm::dmat4>());
#endif
    return true;
}();

} // namespace
