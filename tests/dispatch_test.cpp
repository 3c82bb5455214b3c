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

/// A special item that stands for a property.
class Property : public test::Item
{
public:
    using Item::Item;

    [[nodiscard]] std::string nodeType() const override { return "property"; }
    [[nodiscard]] bool isProperty() const override { return true; }
    [[nodiscard]] std::vector<std::string> ancestorNodeTypes() const override
    {
        return {"property", "item"};
    }
};

class CommandMock : public UndoableCommand
{
public:
    MOCK_METHOD(void, undo, (), (override));
    MOCK_METHOD(void, redo, (), (override));
};

class HierarchyMock : public Hierarchy
{
public:
    using CommandPtr = SceneItemResultUndoableCommand::Ptr;

    MOCK_METHOD(SceneItem::Ptr, sceneItem, (), (const, override));
    MOCK_METHOD(bool, hasChildren, (), (const, override));
    MOCK_METHOD(SceneItemList, children, (), (const, override));
    MOCK_METHOD(bool, hasFilteredChildren, (ChildFilter const&), (const, override));
    MOCK_METHOD(SceneItemList, filteredChildren, (ChildFilter const&), (const, override));
    MOCK_METHOD(ChildFilter, defaultChildFilter, (), (const, override));
    MOCK_METHOD(SceneItem::Ptr, parent, (), (const, override));
    MOCK_METHOD(SceneItem::Ptr, defaultParent, (), (const, override));
    MOCK_METHOD(CommandPtr, createChildCmd, (std::string const&, PathComponent const&), (override));
    MOCK_METHOD(InsertChildCommand::Ptr, insertChildCmd,
                (SceneItem::Ptr const&, SceneItem::Ptr const&), (override));
    MOCK_METHOD(CommandPtr, createGroupCmd, (SceneItemList const&, PathComponent const&),
                (override));
    MOCK_METHOD(UndoableCommand::Ptr, reorderCmd, (SceneItemList const&), (override));
    MOCK_METHOD(UndoableCommand::Ptr, ungroupCmd, (), (override));
};

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

TEST(SceneItem, IsItsPathAndWhatItsRunTimeSaysOfIt)
{
    const test::Item item(test::path("/a|:b"));
    const Property property(test::path("/a|:b"));
    EXPECT_TRUE(item == property && property == item);
    EXPECT_TRUE(item != test::Item(test::path("/a/b")));
    EXPECT_EQ(item.nodeName(), "b");
    EXPECT_EQ(item.runTimeId(), test::runTimeOf(':'));
    EXPECT_THAT(item.ancestorNodeTypes(), testing::ElementsAre("item"));
    EXPECT_THAT(property.ancestorNodeTypes(), testing::ElementsAre("property", "item"));
    EXPECT_FALSE(item.isProperty());

    const test::Item nowhere{Path()};
    EXPECT_EQ(nowhere.runTimeId(), 0U);
    EXPECT_THROW((void)nowhere.nodeName(), InvalidOperationOnPath);
}

TEST_F(Dispatch, HandsTheRequestToTheRunTimeOfTheLastSegment)
{
    const auto hierarchy = std::make_shared<testing::NiceMock<HierarchyMock>>();
    const SceneItem* seen = nullptr;
    handler->onHierarchy = [&](const SceneItem::Ptr& asked) {
        seen = asked.get();
        return hierarchy;
    };
    handler->onCreateItem = [&](const Path& asked) {
        return std::make_shared<test::Item>(asked + std::string("!"));
    };
    EXPECT_EQ(Hierarchy::hierarchy(item), hierarchy);
    EXPECT_EQ(seen, item.get());
    EXPECT_EQ(Hierarchy::createItem(path)->path().string(), "/world/a/!");
    EXPECT_EQ(handler.use_count(), 2);

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
    const auto unknown = test::path("~a"); // run-time 126
    const auto bare = test::registered("bare", nullptr);
    EXPECT_THAT(
        written([&] { EXPECT_THROW((void)Hierarchy::createItem(unknown), InvalidRunTimeId); }),
        MatchesRegex(recordOf("126", "createItem")));
    EXPECT_THAT(written([&] {
                    const auto orphan = std::make_shared<test::Item>(PathSegment("/a", bare, '/'));
                    EXPECT_THROW((void)Hierarchy::hierarchy(orphan), InvalidRunTimeId);
                }),
                MatchesRegex(recordOf(std::to_string(bare), "hierarchy")));
}

TEST_F(Dispatch, WhatAHandlerThrowsIsLoggedAndReachesTheCallerAsTheSameObject)
{
    struct Custom : std::runtime_error
    {
        using runtime_error::runtime_error;
    };
    const Custom* thrown = nullptr;
    const auto fail = [&]() -> std::nullptr_t {
        try {
            throw Custom("no such file");
        } catch (const Custom& error) {
            thrown = &error;
            throw;
        }
    };
    handler->onHierarchy = [&](const auto&) { return fail(); };
    handler->onCreateItem = [&](const auto&) { return fail(); };
    const auto expectSame = [&](const auto& request) {
        try {
            request();
            FAIL() << "nothing thrown";
        } catch (const Custom& caught) {
            EXPECT_EQ(&caught, thrown);
        }
    };
    EXPECT_THAT(written([&] { expectSame([&] { (void)Hierarchy::hierarchy(item); }); }),
                MatchesRegex(recordOf("no such file", "hierarchy")));
    EXPECT_THAT(written([&] { expectSame([&] { (void)Hierarchy::createItem(path); }); }),
                MatchesRegex(recordOf("no such file", "createItem")));
}

TEST_F(Dispatch, WhatIsNoStandardExceptionPassesWithoutARecord)
{
    handler->onHierarchy = [](const auto&) -> Hierarchy::Ptr { throw 42; };
    EXPECT_THAT(written([&] { EXPECT_THROW((void)Hierarchy::hierarchy(item), int); }), IsEmpty());
}

TEST_F(Dispatch, ConveniencesExecuteTheCommandOnceAndReportARefusal)
{
    HierarchyMock hierarchy;
    const auto command = std::make_shared<CommandMock>();
    const SceneItemList order = {item};
    EXPECT_CALL(hierarchy, reorderCmd(order))
        .WillOnce(testing::Return(command))
        .WillOnce(testing::Return(nullptr));
    EXPECT_CALL(hierarchy, ungroupCmd())
        .WillOnce(testing::Return(command))
        .WillOnce(testing::Return(nullptr));
    EXPECT_CALL(*command, redo()).Times(2);
    EXPECT_CALL(*command, undo()).Times(0);
    EXPECT_TRUE(hierarchy.reorder(order));
    EXPECT_FALSE(hierarchy.reorder(order));
    EXPECT_TRUE(hierarchy.ungroup());
    EXPECT_FALSE(hierarchy.ungroup());
}

TEST(Log, WritesTheMessageThenWhereItComesFrom)
{
    EXPECT_EQ(written([] { log("notify", "src/subject", 12, "two\nlines"); }),
              "two\nlines\n\tFile: src/subject\n\tLine: 12\n\tFunction: notify\n");
}

TEST(RawAddress, LeadsBackToTheLivingObjectItWasMadeOf)
{
    const auto first = std::make_shared<test::Item>(test::path("/a"));
    auto second = std::make_shared<test::Item>(test::path("/a"));
    EXPECT_EQ(getSceneItemFromRaw(reinterpret_cast<unsigned long long>(first.get())), nullptr);
    const auto firstAddress = getRawAddress(SceneItem::Ptr(first));
    const auto secondAddress = getRawAddress(SceneItem::Ptr(second));
    EXPECT_NE(firstAddress, secondAddress);
    EXPECT_EQ(getRawAddress(SceneItem::Ptr(first)), firstAddress);
    EXPECT_EQ(getSceneItemFromRaw(firstAddress), first);
    EXPECT_EQ(getSceneItemFromRaw(secondAddress), second);
    EXPECT_EQ(getAttributesFromRaw(firstAddress), nullptr);
    EXPECT_EQ(first.use_count(), 1);

    second.reset();
    EXPECT_EQ(getSceneItemFromRaw(secondAddress), nullptr);
    EXPECT_EQ(getRawAddress(SceneItem::Ptr()), 0U);
    EXPECT_EQ(getSceneItemFromRaw(0), nullptr);
    EXPECT_EQ(getSceneItemFromRaw(firstAddress), first);
}

TEST(RawAddress, AnAddressUsedAgainLeadsToItsNewObject)
{
    // Two lives at one address: the first dies without its storage being given back.
    std::aligned_storage_t<sizeof(test::Item), alignof(test::Item)> storage;
    const auto live = [&](const char* where) {
        return SceneItem::Ptr(new (&storage) test::Item(test::path(where)),
                              [](auto* item) { std::destroy_at(item); });
    };
    auto item = live("/first");
    const auto address = getRawAddress(item);
    const std::weak_ptr<SceneItem> stale = item; // keeps the first life's entry distinct
    item.reset();
    item = live("/second");
    EXPECT_EQ(getSceneItemFromRaw(address), nullptr);
    EXPECT_EQ(getRawAddress(item), address);
    EXPECT_EQ(getSceneItemFromRaw(address), item);
}
