#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "kiv/kit/affine.h"

#include "matrices.h"
#include "random.h"

namespace {

using namespace Kiv_v4;
using namespace Kiv_v4::kit;
using test::error;

constexpr auto kRounding = 1e-12;
constexpr RotationOrder kOrders[] = {RotationOrder::XYZ, RotationOrder::YZX, RotationOrder::ZXY,
                                     RotationOrder::XZY, RotationOrder::YXZ, RotationOrder::ZYX};
constexpr const char* kAxes[] = {"012", "120", "201", "021", "102", "210"};

/// The matrix of a turn about one axis, by the textbook.
Matrix4d turn(std::size_t axis, double angle)
{
    auto matrix = identity();
    const auto next = (axis + 1) % 3;
    const auto last = (axis + 2) % 3;
    matrix.matrix[next][next] = matrix.matrix[last][last] = std::cos(radians(angle));
    matrix.matrix[next][last] = std::sin(radians(angle));
    matrix.matrix[last][next] = -std::sin(radians(angle));
    return matrix;
}

class Affine : public testing::Test
{
protected:
    double number(double size) { return (double(random.below(2'000'001)) / 1e6 - 1) * size; }
    Vector3d vector(double size) { return {{number(size), number(size), number(size)}}; }

    /// Right angles among others.
    Vector3d angles()
    {
        auto result = vector(180);
        for (auto& angle : result.vector) {
            angle = random.below(3) == 0 ? 90.0 * (double(random.below(5)) - 2) : angle;
        }
        return result;
    }

    AffineFactors factors()
    {
        AffineFactors result{vector(3), vector(2), angles(), vector(100)};
        for (auto& scale : result.scale.vector) {
            scale = std::pow(10, scale);
        }
        return result;
    }

    test::Random random;
};

TEST_F(Affine, RotationsOfEveryOrderAreTheTurnsInThatOrderAndGiveTheirAnglesBack)
{
    for (auto i = 0; i < 2000; ++i) {
        const auto order = random.below(6);
        const auto wanted = angles();
        auto product = identity();
        for (const auto* axis = kAxes[order]; *axis; ++axis) {
            const auto index = static_cast<std::size_t>(*axis - '0');
            product = product * turn(index, wanted.vector[index]);
        }
        const auto rotation = rotationMatrix(wanted, kOrders[order]);
        ASSERT_LT(error(rotation, product), kRounding);
        const auto found = rotationAngles(rotation, kOrders[order]);
        ASSERT_LT(error(rotationMatrix(found, kOrders[order]), rotation), kRounding);
        ASSERT_LE(std::abs(found.vector[std::size_t(kAxes[order][1] - '0')]), 90 + 1e-9);

        const auto q = quaternion(rotation);
        ASSERT_GE(q.w, 0);
        ASSERT_NEAR(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w, 1, kRounding);
        const auto size = std::pow(10, number(200));
        ASSERT_LT(error(rotationMatrix(Quaternion{q.x * size, q.y * size, q.z * size, q.w * size}),
                        rotation),
                  kRounding);
    }
    EXPECT_EQ(rotationMatrix(Vector3d({0, 0, 90})).matrix[0][1], 1) << "x turns to y, exactly";
    EXPECT_NEAR(quaternion(rotationMatrix(Vector3d({0, 0, 90}))).z, std::sqrt(0.5), kRounding);
}

TEST_F(Affine, FactorsMakeTheirMatrixAndInversesUndoIt)
{
    for (auto i = 0; i < 2000; ++i) {
        const auto matrix = composed(factors());
        const auto found = decomposed(matrix);
        ASSERT_TRUE(found);
        ASSERT_LT(error(composed(*found), matrix), 1e-10);
        const auto back = inverse(matrix);
        ASSERT_TRUE(back);
        const auto point = vector(10);
        const auto there = transformedPoint(point, matrix);
        const auto again = transformedPoint(there, *back);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            ASSERT_NEAR(again.vector[axis], point.vector[axis], 1e-5);
        }
        ASSERT_EQ(transformedDirection(point, matrix),
                  transformedPoint(
                      point, scaleShearMatrix({{1, 1, 1}}, {}) * [&] {
                          auto turned = matrix;
                          turned.matrix[3] = {0, 0, 0, 1};
                          return turned;
                      }()));
    }
    const auto tiny = scaleShearMatrix({{1e-100, 1e100, -1}}, {});
    EXPECT_EQ(inverse(tiny)->matrix[1][1], 1e-100);
    auto infinite = identity();
    infinite.matrix[3][0] = std::numeric_limits<double>::infinity();
    auto perspective = identity();
    perspective.matrix[0][3] = 0.5;
    for (const auto& none :
         {scaleShearMatrix({{1, 0, 1}}, {}), Matrix4d(), infinite, perspective}) {
        EXPECT_FALSE(inverse(none));
        EXPECT_FALSE(decomposed(none));
    }
}

TEST_F(Affine, ALookPointsMinusZAtItsTargetWithYUpwards)
{
    for (auto i = 0; i < 500; ++i) {
        const auto eye = vector(10);
        const auto target = vector(10);
        const auto look = lookAt(eye, target);
        ASSERT_TRUE(look);
        ASSERT_EQ(transformedPoint({}, *look), eye);
        const auto local = transformedPoint(target, *inverse(*look));
        ASSERT_NEAR(local.vector[0], 0, 1e-9);
        ASSERT_NEAR(local.vector[1], 0, 1e-9);
        ASSERT_LT(local.vector[2], 0);
        const auto up = transformedDirection({{0, 1, 0}}, *look);
        ASSERT_GE(up.vector[1], 0);
        ASSERT_NEAR(transformedDirection({{1, 0, 0}}, *look).vector[1], 0, kRounding);
        ASSERT_LT(error(rotationMatrix(rotationAngles(*look)) * translationMatrix(eye), *look),
                  kRounding);
    }
    EXPECT_FALSE(lookAt({{1, 2, 3}}, {{1, 2, 3}}));
    EXPECT_FALSE(lookAt({}, {{0, -5, 0}})) << "along up";
    EXPECT_FALSE(lookAt({}, {{1, 0, 0}}, {}));
}

} // namespace
