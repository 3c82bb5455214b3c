#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "kiv/pathComponent.h"

#include "random.h"

using namespace Kiv_v4;

TEST(PathComponent, IdsCountUpFromZeroAndAreNeverGivenAgain)
{
    EXPECT_EQ(PathComponent("first").id(), 0U);
    const PathComponent kept("second");
    EXPECT_EQ(kept.id(), 1U);
    EXPECT_EQ(PathComponent("first").id(), 2U);
    EXPECT_EQ(PathComponent("second").id(), 1U);
}

TEST(PathComponent, AnyBytesAreANameInternedOnce)
{
    using namespace std::string_literals;
    const std::vector names = {""s,
                               "a"s,
                               "a\0"s,
                               "a\0b"s,
                               "\0"s,
                               "a/b,c"s,
                               "Würfel-方"s,
                               "\xff\xfe"s,
                               " spaced "s,
                               "A"s,
                               std::string(100'000, 'x')};
    const auto before = PathComponent::tableSize();
    const auto components = PathComponent::toComponents(names);
    std::set<std::uint64_t> ids;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const PathComponent again(names[i]);
        EXPECT_EQ(again, components[i]);
        EXPECT_EQ(again.id(), components[i].id());
        EXPECT_EQ(&again.string(), &components[i].string());
        EXPECT_EQ(again.string(), names[i]);
        EXPECT_EQ(std::hash<PathComponent>()(again), again.id());
        EXPECT_TRUE(again);
        ids.insert(again.id());
    }
    EXPECT_EQ(ids.size(), names.size());
    EXPECT_EQ(PathComponent::tableSize(), before + names.size());
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

TEST(PathComponent, TheNullComponentHasNoNameAndEqualsOnlyItself)
{
    const PathComponent null;
    EXPECT_EQ(null.id(), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(null.string(), "");
    EXPECT_FALSE(null);
    EXPECT_EQ(null, PathComponent());
    EXPECT_NE(null, PathComponent(""));
    EXPECT_FALSE(PathComponent::exists(""));
}

TEST(PathComponent, ReleasingByHandForgetsTheNameOfASoleHolderOnly)
{
    PathComponent old("name");
    {
        auto shared = old;
        shared.releaseSharedData();
        EXPECT_TRUE(PathComponent::exists("name"));
    }
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

namespace {

/// The intern table as plain data: per name in use its id and how many hold it.
class Names
{
public:
    struct Use
    {
        std::uint64_t id;
        int holders;
    };

    void hold(const std::optional<std::string>& name)
    {
        if (name) {
            const auto [use, isNew] = _uses.try_emplace(*name, Use{_nextId, 0});
            _nextId += isNew ? 1 : 0;
            ++use->second.holders;
        }
    }

    void release(const std::optional<std::string>& name)
    {
        if (name && --_uses.at(*name).holders == 0) {
            _uses.erase(*name);
        }
    }

    void check(const PathComponent& component, const std::optional<std::string>& name) const
    {
        EXPECT_EQ(static_cast<bool>(component), name.has_value());
        EXPECT_EQ(component.string(), name.value_or(""));
        EXPECT_EQ(component.id(), name ? _uses.at(*name).id : ~std::uint64_t{0});
    }

    [[nodiscard]] const std::map<std::string, Use>& uses() const { return _uses; }
    [[nodiscard]] std::uint64_t& nextId() { return _nextId; }

private:
    std::map<std::string, Use> _uses;
    std::uint64_t _nextId = 0;
};

} // namespace

TEST(PathComponent, TheTableHoldsExactlyTheNamesInUse)
{
    test::Random random;
    std::vector<std::string> pool;
    for (std::size_t i = 0; i < 3'000; ++i) {
        pool.push_back("name" + std::to_string(i));
    }
    std::vector<PathComponent> slots(2'000);
    std::vector<std::optional<std::string>> expected(slots.size());
    Names names;
    names.nextId() = PathComponent("probe").id() + 1;
    const auto others = PathComponent::tableSize();

    for (int step = 0; step < 50'000; ++step) {
        const auto to = random.below(slots.size());
        const auto from = random.below(20) == 0 ? to : random.below(slots.size());
        auto name = expected[to];
        switch (random.below(5)) {
        case 0: // a name twice as likely as each other step keeps the table full
        case 1:
            name = random.of(pool);
            names.hold(name);
            slots[to] = PathComponent(*name);
            break;
        case 2:
            name = expected[from];
            names.hold(name);
            slots[to] = static_cast<const PathComponent&>(slots[from]);
            break;
        case 3:
            name = expected[from];
            names.hold(name);
            slots[to] = std::move(slots[from]);
            if (from != to) {
                names.release(expected[from]);
                expected[from].reset();
                names.check(slots[from], expected[from]);
            }
            break;
        default:
            name.reset();
            slots[to] = PathComponent();
        }
        names.release(expected[to]);
        expected[to] = name;
        names.check(slots[to], name);
        ASSERT_EQ(PathComponent::tableSize(), others + names.uses().size());
        if (step % 1'000 == 0) {
            for (const auto& each : pool) {
                ASSERT_EQ(PathComponent::exists(each), names.uses().count(each) == 1) << each;
            }
        }
    }
    slots.clear();
    EXPECT_EQ(PathComponent::tableSize(), others);
}
