#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "kiv/pathComponent.h"

#include "random.h"

using namespace Kiv_v4;

// The first of this file, since it wants a table that was never used.
TEST(PathComponent, TheTableHoldsExactlyTheNamesInUseUnderIdsThatCountUpFromZero)
{
    test::Random random;
    std::vector<PathComponent> slots(1'500);
    std::vector<std::string> held(slots.size());               // the name in each slot, if any
    std::map<std::string, std::pair<std::uint64_t, int>> uses; // the id and the holders of each
    ASSERT_EQ(PathComponent("probe").id(), 0U);
    std::uint64_t nextId = 1; // never one that was given before
    const auto put = [&](std::size_t slot, std::string name) {
        if (!name.empty() && uses.try_emplace(name, nextId, 0).first->second.second++ == 0) {
            ++nextId;
        }
        const auto old = std::exchange(held[slot], std::move(name));
        if (!old.empty() && --uses[old].second == 0) {
            uses.erase(old);
        }
    };
    for (int step = 0; step < 40'000; ++step) {
        const auto to = random.below(slots.size());
        const auto from = random.below(20) == 0 ? to : random.below(slots.size());
        const auto what = random.below(8);
        if (what < 2) {
            put(to, std::to_string(random.below(2'500)));
            slots[to] = PathComponent(held[to]);
        } else if (what < 4) {
            put(to, held[from]);
            slots[to] = static_cast<const PathComponent&>(slots[from]);
        } else if (what < 6) {
            put(to, held[from]);
            put(from, from == to ? held[from] : "");
            slots[to] = std::move(slots[from]);
            ASSERT_EQ(slots[from].string(), held[from]);
        } else if (what < 7) {
            put(to, "");
            slots[to] = PathComponent();
        }
        ASSERT_EQ(slots[to].string(), held[to]);
        ASSERT_EQ(slots[to].id(), held[to].empty() ? ~std::uint64_t{0} : uses[held[to]].first);
        ASSERT_EQ(PathComponent::tableSize(), uses.size());
        for (int name = 0; step % 1'000 == 0 && name < 2'500; ++name) {
            const auto text = std::to_string(name);
            ASSERT_EQ(PathComponent::exists(text), uses.count(text) == 1) << text;
        }
    }
}

TEST(PathComponent, AnyBytesAreANameInternedOnceAndNullIsNone)
{
    using namespace std::string_literals;
    const std::vector names = {
        ""s,    "a"s, "a\0"s, "a\0b"s,    "\0"s, "a/b"s, "Würfel"s, "\xff\xfe"s,
        " a "s, "A"s, "ab"s,  "aaaaaaa"s, "-7"s, "-8"s,  "bbaa"s,   std::string(99'999, 'x')};
    const auto components = PathComponent::toComponents(names);
    std::set<std::uint64_t> ids = {PathComponent().id()};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const PathComponent again(names[i]);
        EXPECT_EQ(again, components[i]);
        EXPECT_EQ(&again.string(), &components[i].string());
        EXPECT_EQ(again.string(), names[i]);
        EXPECT_EQ(std::hash<PathComponent>()(again), again.id());
        EXPECT_TRUE(again);
        EXPECT_TRUE(ids.insert(again.id()).second) << names[i];
    }
    EXPECT_EQ(PathComponent::tableSize(), names.size());
    EXPECT_FALSE(PathComponent());
    EXPECT_EQ(PathComponent().string(), "");
    EXPECT_EQ(PathComponent(), PathComponent());
    EXPECT_NE(PathComponent(), PathComponent(""));
}

TEST(PathComponent, NamesOfAnyLengthThatDifferInOneByteAreToldApart)
{
    for (std::size_t length = 1; length < 40; ++length) {
        const PathComponent plain(std::string(length, 'x'));
        for (std::size_t i = 0; i < length; ++i) {
            auto name = std::string(length, 'x');
            name[i] = 'y';
            const PathComponent other(name);
            EXPECT_NE(other, plain);
            EXPECT_EQ(PathComponent(name), other);
        }
    }
}

TEST(PathComponent, ReleasingByHandForgetsTheNameOfASoleHolderOnly)
{
    PathComponent old("name");
    PathComponent(old).releaseSharedData();
    EXPECT_TRUE(PathComponent::exists("name"));
    old.releaseSharedData();
    EXPECT_FALSE(PathComponent::exists("name"));
    EXPECT_EQ(old.string(), "name");

    const PathComponent renewed("name");
    EXPECT_GT(renewed.id(), old.id());
    EXPECT_NE(renewed, old);
    old = PathComponent(); // releases the name, whoever has entered it since
    EXPECT_FALSE(PathComponent::exists("name"));
    EXPECT_EQ(renewed.string(), "name");
}
