#include <cstddef>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "kiv/kiv.h"

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

/// The log's record of an exception that an entry point let through.
std::string recordOf(const std::string& what, const std::string& function, const std::string& file)
{
    return "caught exception " + what + "\n\n\tFile: " + file +
           "\n\tLine: [0-9]+\n\tFunction: " + function + "\n";
}

/// A node in the first version of the interface.
struct GraphNode : UINodeGraphNode
{
    bool hasPosition() const override { return false; }
    TypedVectorN<float, 2> position() const override { return {}; }
    UndoableCommand::Ptr setPositionCmd(const TypedVectorN<float, 2>&) override { return nullptr; }
};

template <class... Handlers>
struct All : Handlers...
{};

/// A handler of every kind that makes something of an item. It has but nodes for items.
struct Everything : All<HierarchyHandler, Transform3dHandler, SceneItemOpsHandler,
                        AttributesHandler, UINodeGraphNodeHandler, Object3dHandler, MaterialHandler,
                        ContextOpsHandler, CameraHandler, LightHandler, NodeDefHandler>
{
    using Item = SceneItem::Ptr;

    Hierarchy::Ptr hierarchy(const Item& item) override { return answer(item); }
    Item createItem(const Path& path) override
    {
        return answer(std::make_shared<test::Item>(path));
    }
    SceneItemList rootItems(const Path&) override { return {}; }
    Transform3d::Ptr transform3d(const Item& item) const override { return answer(item); }
    SceneItemOps::Ptr sceneItemOps(const Item& item) override { return answer(item); }
    Attributes::Ptr attributes(const Item& item) override { return answer(item); }
    UINodeGraphNode::Ptr uiNodeGraphNode(const Item& item) override { return answer(item), node; }
    Object3d::Ptr object3d(const Item& item) override { return answer(item); }
    Material::Ptr material(const Item& item) override { return answer(item); }
    ContextOps::Ptr contextOps(const Item& item) override { return answer(item); }
    Camera::Ptr camera(const Item& item) override { return answer(item); }
    Selection findCameras(const Path&) override { return {}; }
    Light::Ptr light(const Item& item) override { return answer(item); }
    NodeDef::Ptr definition(const Item& item) override { return answer(item); }
    NodeDef::Ptr definition(const std::string&) override { return answer(nullptr); }
    std::vector<NodeDef::Ptr> definitions(const std::string&) override { return {}; }

    std::function<std::nullptr_t(const SceneItem::Ptr&)> answer;
    const UINodeGraphNode::Ptr node = std::make_shared<GraphNode>();
};

/// An entry point that takes an item: its name and file in the log, and how to call it.
using EntryPoint = std::tuple<std::string, std::string,
                              std::function<std::shared_ptr<void>(const SceneItem::Ptr&)>>;
const std::vector<EntryPoint> kEntryPoints = {
    {"hierarchy", "src/hierarchy", Hierarchy::hierarchy},
    {"createItem", "src/hierarchy",
     [](const auto& item) { return item ? Hierarchy::createItem(item->path()) : nullptr; }},
    {"transform3dRead", "src/transform3d", Transform3dRead::transform3dRead},
    {"transform3d", "src/transform3d", Transform3d::transform3d},
    {"editTransform3d", "src/transform3d",
     std::bind(Transform3d::editTransform3d, std::placeholders::_1, EditTransform3dHint::Scale)},
    {"sceneItemOps", "src/sceneItemOps", SceneItemOps::sceneItemOps},
    {"attributes", "src/attributes", Attributes::attributes},
    {"uiNodeGraphNode", "src/uiNodeGraphNode", UINodeGraphNode::uiNodeGraphNode},
    {"uiNodeGraphNode", "src/uiNodeGraphNode", UINodeGraphNode_v4_1::uiNodeGraphNode},
    {"object3d", "src/object3d", Object3d::object3d},
    {"material", "src/material", Material::material},
    {"contextOps", "src/contextOps", ContextOps::contextOps},
    {"camera", "src/camera", Camera::camera},
    {"light", "src/light", Light::light},
};

/// Run-time 1 with handlers under the test's control, and an item of it.
class Dispatch : public testing::Test
{
protected:
    std::shared_ptr<Everything> h = std::make_shared<Everything>();
    Rtid id = RunTimeMgr::instance().register_(
        "run-time", {h, h, h, h, h, h, h, {}, h, h, {}, h, {}, {}, h, {}});
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
    std::string seen;
    h->answer = [&](const auto& asked) {
        seen = asked->path().string();
        return nullptr;
    };
    const auto other = test::registered("other", std::make_shared<test::HierarchyStub>());
    const auto elsewhere = std::make_shared<test::Item>(path + PathSegment(":b", other, ':'));
    for (const auto& [function, file, ask] : kEntryPoints) {
        EXPECT_EQ(ask(elsewhere), nullptr) << function;
        EXPECT_EQ(std::exchange(seen, ""), "") << function;
        (void)ask(item);
        EXPECT_EQ(std::exchange(seen, ""), "/world/a") << function;
    }
    EXPECT_EQ(UINodeGraphNode::uiNodeGraphNode(item), h->node);
    EXPECT_EQ(UINodeGraphNode_v4_1::uiNodeGraphNode(item), nullptr) << "not of that version";
}

TEST_F(Dispatch, WithoutAPathThereIsNothingToAskAndNothingToReport)
{
    h->answer = [](const auto&) -> std::nullptr_t { throw std::logic_error("asked"); };
    const auto output = written([&] {
        for (const auto& [function, file, ask] : kEntryPoints) {
            EXPECT_EQ(ask(nullptr), nullptr) << function;
            for (const auto& none : {Path(), Path(PathSegment("", id, '/')), test::path("/|:")}) {
                EXPECT_EQ(ask(std::make_shared<test::Item>(none)), nullptr) << function;
            }
        }
    });
    EXPECT_THAT(output, IsEmpty());
}

TEST_F(Dispatch, OnlyAMissingHierarchyIsLoggedAndThrown)
{
    for (const auto unfit : {test::registered("bare", nullptr), Rtid{126}}) {
        const auto orphan = std::make_shared<test::Item>(PathSegment("/a", unfit, '/'));
        const auto message = std::to_string(unfit);
        for (const auto& [function, file, ask] : kEntryPoints) {
            const auto missed = file == "src/hierarchy";
            const auto output = written([&, &ask = ask] {
                if (missed) {
                    expectError<InvalidRunTimeId>([&] { (void)ask(orphan); }, message);
                } else {
                    EXPECT_EQ(ask(orphan), nullptr);
                }
            });
            EXPECT_THAT(output, MatchesRegex(missed ? recordOf(message, function, file) : ""));
        }
        EXPECT_EQ(NodeDef::definition(unfit, "type"), nullptr);
    }
}

TEST_F(Dispatch, WhatAHandlerThrowsReachesTheCallerAndIsLoggedWhenItIsAStandardException)
{
    const auto define = [this](const auto&) { return NodeDef::definition(id, "type"); };
    auto entryPoints = kEntryPoints;
    entryPoints.emplace_back("definition", "src/nodeDef", define);
    std::set<std::string> places;
    const auto standard = std::make_exception_ptr(std::runtime_error("no such file"));
    for (const auto& error : {standard, std::make_exception_ptr(42)}) {
        h->answer = [&](const auto&) -> std::nullptr_t { std::rethrow_exception(error); };
        for (const auto& [function, file, ask] : entryPoints) {
            const auto output = written([&, &ask = ask] {
                try {
                    (void)ask(item);
                    ADD_FAILURE() << "nothing thrown";
                } catch (...) {
                    EXPECT_EQ(std::current_exception(), error) << "not the same object";
                }
            });
            const auto record = recordOf("no such file", function, file);
            EXPECT_THAT(output, MatchesRegex(error == standard ? record : "")) << function;
            const auto line = output.find("Line: ");
            if (line != output.npos) {
                places.insert(file + output.substr(line, output.find('\n', line) - line));
            }
        }
    }
    EXPECT_EQ(places.size(), entryPoints.size() - 1) << "one is the other version's with a cast";
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
