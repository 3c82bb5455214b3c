#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <sstream>
#include <type_traits>
#include <vector>

#include "kiv/stringUtils.h"
#include "kiv/value.h"

#include "valueReference.h"

using namespace Kiv_v4;
using test::Pair;
using test::sameBits;
using test::text;

namespace {

template <class T>
void expectEqualReads(Pair pair, int times)
{
    auto readFirst = pair;
    for (int i = 0; i < times; ++i) {
        ASSERT_TRUE(sameBits(readFirst.value.get<T>(), readFirst.reference.get<T>()));
    }
    ASSERT_EQ(text(readFirst.value), pair.reference.text());
    const auto shown = ::testing::PrintToString(text(pair.value));
    ASSERT_TRUE(pair.value.isType<T>());
    ASSERT_EQ(text(pair.value), pair.reference.text());
    for (int i = 0; i < times; ++i) {
        const auto ours = pair.value.get<T>();
        const auto theirs = pair.reference.get<T>();
        ASSERT_TRUE(sameBits(ours, theirs)) << shown << ": " << ours << " is not " << theirs;
    }
}

template <class T>
std::vector<T> samples(std::mt19937& random)
{
    using Limits = std::numeric_limits<T>;
    std::vector<T> result{T(0), T(1), Limits::lowest(), Limits::max()};
    if constexpr (!std::is_same_v<T, bool>) {
        // All bit patterns: every exponent, denormal numbers, infinities and not-a-numbers.
        for (int i = 0; i < 20'000; ++i) {
            const auto bits = (std::uint64_t{random()} << 32) | random();
            std::memcpy(&result.emplace_back(), &bits, sizeof(T));
        }
    }
    if constexpr (std::is_floating_point_v<T>) {
        result.insert(result.end(),
                      {T(-0.0), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(),
                       -Limits::quiet_NaN(), Limits::denorm_min(), Limits::min(), T(0.1), T(1e5),
                       T(999999.5), T(1e6), T(1e-4), T(1e-5), T(100), T(123456.5), T(1234565)});
    }
    return result;
}

} // namespace

template <class T>
class NumberValue : public testing::Test
{};
using Numbers = testing::Types<bool, int, float, double>;
TYPED_TEST_SUITE(NumberValue, Numbers);

TYPED_TEST(NumberValue, IsWrittenAndReadAsByAStreamOfTheClassicLocale)
{
    std::mt19937 random(4711);
    for (const TypeParam v : samples<TypeParam>(random)) {
        ASSERT_NO_FATAL_FAILURE(expectEqualReads<TypeParam>(Pair(v), 2));
    }
}

TYPED_TEST(NumberValue, IsReadFromTextInFrontOfItAsByAStreamOfTheClassicLocale)
{
    const auto fronts =
        split("|5| |\n\t|+|-|--|.|1.|1. |1.5.|1,00|0|00|x|12abc|12 abc|2 |true |+3 |0x|0x10 |"
              "0x1p|1e|1e+|1e-|1e5 |1e30|1e39 |1e308|1e999 |-1e999 |1e-32|1e-46 |"
              "4.9e-324 |1e-400 |inf |infinity|nan |nan(1)|2147483647 |2147483648 |"
              "99999999999|9007199254740993|3.402823466385288598e38 |"
              "0.1000000000000000055511151231257827021181583404541015625",
              '|');
    for (const auto& front : fronts) {
        for (const TypeParam v : {TypeParam(1), TypeParam(0)}) {
            Pair pair(front);
            pair.assign(Pair(v));
            ASSERT_NO_FATAL_FAILURE(expectEqualReads<TypeParam>(pair, 4));
        }
    }
}

TEST(Value, AskedForAnotherTypeRefusesAndConsumesNothing)
{
    const Value value(1);
    EXPECT_EQ(value.safeGet(0.5), 0.5);
    EXPECT_EQ(value.safeGet(true), true);
    try {
        value.get<double>();
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(error.what(), value.typeName());
        EXPECT_TRUE(dynamic_cast<const InvalidValueGet*>(&error));
    }
    EXPECT_EQ(value.safeGet(7), 1);
    EXPECT_EQ(value.safeGet<std::string>("none"), "1") << "every value has a text";
}

TEST(Value, WithoutATypeHasNoNumberAndAnEmptyText)
{
    const Value value;
    EXPECT_TRUE(value.empty());
    EXPECT_EQ(value.typeName(), "");
    EXPECT_EQ(value.safeGet(7), 7);
    EXPECT_EQ(text(value), "");
    EXPECT_STREQ(InvalidValueGet(value).what(), "");
    EXPECT_THROW(value.get<int>(), InvalidValueGet);
}

TEST(Value, MovedFromTakesANewValue)
{
    Value from(5);
    from.get<int>();
    const Value seven(7);
    Value to = std::move(from);
    EXPECT_EQ(to.get<int>(), 0) << "what was read stays read";
    from = seven;
    EXPECT_EQ(from.get<int>(), 7);
    from = Value(8);
    EXPECT_EQ(from.get<int>(), 8);
}

TEST(Value, EqualityAndEmptinessLookAtTheTextOnly)
{
    EXPECT_EQ(Value(1), Value("1"));
    EXPECT_EQ(Value(true), Value(1.0));
    EXPECT_TRUE(Value("").empty());
    EXPECT_TRUE(Value("").isType<std::string>());
}

TEST(Value, IsMadeOfItsFiveTypesAndLiteralsOnly)
{
    EXPECT_TRUE(Value("no").isType<std::string>());
    EXPECT_TRUE((std::is_convertible_v<const char*, Value>));
    EXPECT_FALSE((std::is_constructible_v<Value, long>));
    EXPECT_FALSE((std::is_constructible_v<Value, const int*>));
    EXPECT_FALSE((std::is_constructible_v<Value, std::nullptr_t>));
}

TEST(Value, TextIgnoresTheGlobalLocale)
{
    std::ostringstream foreign;
    foreign << 1234.5 << true;
    ASSERT_EQ(foreign.str(), "1.234,51") << "see commaLocale.cpp";
    EXPECT_EQ(text(Value(123456)), "123456");
    EXPECT_EQ(text(Value(1234.5)), "1234.5");
    EXPECT_EQ(text(Value(std::numeric_limits<double>::infinity())), "inf");
}
