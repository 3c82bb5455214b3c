#pragma once

#include <algorithm>
#include <cmath>

#include "kiv/transform3dRead.h"

namespace test {

inline Kiv_v4::Matrix4d translationOf(double x, double y, double z)
{
    return {{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {x, y, z, 1}}}};
}

/// The largest difference of two elements, relative to the largest element of `expected`.
inline double error(const Kiv_v4::Matrix4d& actual, const Kiv_v4::Matrix4d& expected)
{
    auto size = 0.0;
    auto difference = 0.0;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            const auto element = expected.matrix[row][column];
            size = std::max(size, std::abs(element));
            difference = std::max(difference, std::abs(actual.matrix[row][column] - element));
        }
    }
    return difference / size;
}

} // namespace test
