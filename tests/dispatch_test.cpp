#include <cstddef>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "kiv/hierarchy.h"
#include "kiv/log.h"
#include "kiv/rawAddress.h"

#include "paths.h"
#include "stubs.h"

using namespace Kiv_v4;
using test::expectError;
using testing::IsEmpty;
using testing::MatchesRegex;

namespace {

/// What `operation` writes to the standard error stream.
template <class Operation>
std::string written(Operation operation)
{
    testing::internal::CaptureStderr();
    operation();
    return testing::internal::GetCapturedStderr();
}

/// The log's record of an exception that an entry point of the hierarchy let through.
std::string recordOf(const std::string& what, const std::string& function)
{
    return "caught exception " + what +
           "\n\n\tFile: src/hierarchy\n\tLine: [0-9]+\n\tFunction: " + function + "\n";
}

/// Run-time 1 with a hierarchy handler under the test's control, and an item of it.
class Dispatch : public testing::Test
{
protected:
    std::shared_ptr<test::HierarchyStub> handler = std::make_shared<test::HierarchyStub>();
    Rtid id = test::registered("run-time", handler);
    Path path{PathSegment("/world/a", id, '/')};
    SceneItem::Ptr item = std::make_shared<test::Item>(path);
};

} // namespace

TEST(SceneItem, IsItsPath)
{
    struct Special : test::Item
    {
        using Item::Item;
    };
    const test::Item item(test::path("/a|:b"));
    const Special special(test::path("/a|:b"));
    EXPECT_TRUE(item == special && special == item);
    EXPECT_TRUE(item != test::Item(test::path("/a/b")));
    EXPECT_EQ(item.nodeName(), "b");
    EXPECT_EQ(item.runTimeId(), test::runTimeOf(':'));
    EXPECT_THAT(special.ancestorNodeTypes(), testing::ElementsAre("item"));
    EXPECT_FALSE(special.isProperty());
    EXPECT_THROW((void)test::Item(Path()).nodeName(), InvalidOperationOnPath);
}

TEST_F(Dispatch, HandsTheRequestToTheRunTimeOfTheLastSegment)
{
    const SceneItem* seen = nullptr;
    handler->onHierarchy = [&](const SceneItem::Ptr& asked) {
        seen = asked.get();
        return nullptr;
    };
    handler->onCreateItem = [&](const Path& asked) {
        return std::make_shared<test::Item>(asked + std::string("!"));
    };
    EXPECT_EQ(Hierarchy::hierarchy(item), nullptr);
    EXPECT_EQ(seen, item.get());
    EXPECT_EQ(Hierarchy::createItem(path)->path().string(), "/world/a/!");
    const auto other = test::registered("other", std::make_shared<test::HierarchyStub>());
    EXPECT_EQ(Hierarchy::createItem(path + PathSegment(":b", other, ':')), nullptr);
}

TEST_F(Dispatch, WithoutAPathThereIsNothingToAskAndNothingToReport)
{
    handler->onHierarchy = [](const auto&) -> Hierarchy::Ptr { throw std::logic_error("asked"); };
    handler->onCreateItem = [](const auto&) -> SceneItem::Ptr { throw std::logic_error("asked"); };
    const auto output = written([&] {
        EXPECT_EQ(Hierarchy::hierarchy(nullptr), nullptr);
        for (const auto& none : {Path(), Path(PathSegment("", id, '/')), test::path("/|:")}) {
            EXPECT_EQ(Hierarchy::hierarchy(std::make_shared<test::Item>(none)), nullptr);
            EXPECT_EQ(Hierarchy::createItem(none), nullptr);
        }
    });
    EXPECT_THAT(output, IsEmpty());
}

TEST_F(Dispatch, AMissingHierarchyIsLoggedAndThrown)
{
    for (const auto unfit : {test::registered("bare", nullptr), Rtid{126}}) {
        const auto orphan = std::make_shared<test::Item>(PathSegment("/a", unfit, '/'));
        const auto message = std::to_string(unfit);
        EXPECT_THAT(written([&] {
                        expectError<InvalidRunTimeId>(
                            [&] { (void)Hierarchy::createItem(orphan->path()); }, message);
                    }),
                    MatchesRegex(recordOf(message, "createItem")));
        EXPECT_THAT(written([&] {
                        expectError<InvalidRunTimeId>([&] { (void)Hierarchy::hierarchy(orphan); },
                                                      message);
                    }),
                    MatchesRegex(recordOf(message, "hierarchy")));
    }
}

TEST_F(Dispatch, WhatAHandlerThrowsIsLoggedAndReachesTheCallerAsTheSameObject)
{
    struct Custom : std::exception
    {
        const char* what() const noexcept override { return "no such file"; }
    };
    const Custom* thrown = nullptr;
    handler->onHierarchy = [&](const auto&) -> Hierarchy::Ptr {
        try {
            throw Custom();
        } catch (const Custom& error) {
            thrown = &error;
            throw;
        }
    };
    const auto output = written([&] {
        try {
            (void)Hierarchy::hierarchy(item);
            ADD_FAILURE() << "nothing thrown";
        } catch (const Custom& caught) {
            EXPECT_EQ(&caught, thrown);
        }
    });
    EXPECT_THAT(output, MatchesRegex(recordOf("no such file", "hierarchy")));
}

TEST_F(Dispatch, WhatIsNoStandardExceptionPassesWithoutARecord)
{
    handler->onHierarchy = [](const auto&) -> Hierarchy::Ptr { throw 42; };
    EXPECT_THAT(written([&] { EXPECT_THROW((void)Hierarchy::hierarchy(item), int); }), IsEmpty());
}

TEST(Log, WritesTheMessageThenWhereItComesFrom)
{
    EXPECT_EQ(written([] { log("notify", "src/subject", 12, "two\nlines"); }),
              "two\nlines\n\tFile: src/subject\n\tLine: 12\n\tFunction: notify\n");
}

TEST(RawAddress, LeadsBackToTheLivingObjectItWasMadeOf)
{
    const SceneItem::Ptr first = std::make_shared<test::Item>(test::path("/a"));
    SceneItem::Ptr second = std::make_shared<test::Item>(test::path("/a"));
    EXPECT_EQ(getSceneItemFromRaw(reinterpret_cast<unsigned long long>(first.get())), nullptr);
    const auto firstAddress = getRawAddress(first);
    const auto secondAddress = getRawAddress(second);
    EXPECT_NE(firstAddress, secondAddress);
    EXPECT_EQ(getRawAddress(first), firstAddress);
    EXPECT_EQ(getSceneItemFromRaw(secondAddress), second);
    EXPECT_EQ(getAttributesFromRaw(firstAddress), nullptr);
    second.reset();
    EXPECT_EQ(getSceneItemFromRaw(secondAddress), nullptr);
    EXPECT_EQ(getRawAddress(second), 0U);
    EXPECT_EQ(getSceneItemFromRaw(0), nullptr);
    EXPECT_EQ(getSceneItemFromRaw(firstAddress), first);
    EXPECT_EQ(first.use_count(), 1);
}

TEST(RawAddress, AnAddressUsedAgainLeadsToItsNewObject)
{
    // Two lives at one address: storage outlives them, and each deleter holds the token until the
    // last weak reference to its item is gone too.
    alignas(test::Item) std::byte storage[sizeof(test::Item)];
    const auto token = std::make_shared<int>();
    const auto live = [&](const char* where) {
        return SceneItem::Ptr(new (&storage) test::Item(test::path(where)),
                              [token](auto* item) { std::destroy_at(item); });
    };
    auto item = live("/first");
    const auto alone = token.use_count();
    const auto address = getRawAddress(item);
    item.reset();
    item = live("/second");
    EXPECT_EQ(token.use_count(), alone + 1) << "the first life is remembered";
    EXPECT_EQ(getSceneItemFromRaw(address), nullptr);
    EXPECT_EQ(getRawAddress(item), address);
    EXPECT_EQ(token.use_count(), alone) << "the first life is forgotten";
    EXPECT_EQ(getSceneItemFromRaw(address), item);
}
