#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "kiv/runTimeMgr.h"

#include "stubs.h"

using namespace Kiv_v4;
using testing::UnorderedElementsAre;

namespace {

RunTimeMgr& manager()
{
    return RunTimeMgr::instance();
}

template <class Error, class Operation>
void expectError(Operation operation, const std::string& message)
{
    EXPECT_THAT(operation, testing::Throws<Error>(
                               testing::Property(&std::exception::what, testing::StrEq(message))));
}

/// Calls `visit` with the name, the record's member, the setter and the getter of each handler
/// kind, in the order in which a run-time's handlers are released.
template <class Visit>
void forEachKind(Visit visit)
{
    using H = RunTimeMgr::Handlers;
    using M = RunTimeMgr;
    visit("hierarchy", &H::hierarchyHandler, &M::setHierarchyHandler, &M::hierarchyHandler);
    visit("transform3d", &H::transform3dHandler, &M::setTransform3dHandler, &M::transform3dHandler);
    visit("sceneItemOps", &H::sceneItemOpsHandler, &M::setSceneItemOpsHandler,
          &M::sceneItemOpsHandler);
    visit("attributes", &H::attributesHandler, &M::setAttributesHandler, &M::attributesHandler);
    visit("connection", &H::connectionHandler, &M::setConnectionHandler, &M::connectionHandler);
    visit("uiNodeGraphNode", &H::uiNodeGraphNodeHandler, &M::setUINodeGraphNodeHandler,
          &M::uiNodeGraphNodeHandler);
    visit("object3d", &H::object3dHandler, &M::setObject3dHandler, &M::object3dHandler);
    visit("material", &H::materialHandler, &M::setMaterialHandler, &M::materialHandler);
    visit("contextOps", &H::contextOpsHandler, &M::setContextOpsHandler, &M::contextOpsHandler);
    visit("uiInfo", &H::uiInfoHandler, &M::setUIInfoHandler, &M::uiInfoHandler);
    visit("camera", &H::cameraHandler, &M::setCameraHandler, &M::cameraHandler);
    visit("light", &H::lightHandler, &M::setLightHandler, &M::lightHandler);
    visit("pathMapping", &H::pathMappingHandler, &M::setPathMappingHandler, &M::pathMappingHandler);
    visit("nodeDef", &H::nodeDefHandler, &M::setNodeDefHandler, &M::nodeDefHandler);
    visit("sceneSegment", &H::sceneSegmentHandler, &M::setSceneSegmentHandler,
          &M::sceneSegmentHandler);
    visit("batchOps", &H::batchOpsHandler, &M::setBatchOpsHandler, &M::batchOpsHandler);
}

/// A handler of any kind that the registry cannot tell from a real one, and that does `onRelease`
/// when its last holder lets go.
template <class Handler>
std::shared_ptr<Handler> handlerReleasing(std::function<void()> onRelease)
{
    const std::shared_ptr<int> owner(new int, [onRelease](int* held) {
        delete held;
        onRelease();
    });
    return {owner, reinterpret_cast<Handler*>(owner.get())};
}

} // namespace

TEST(RunTimeMgr, IdsCountUpFromOneAndAreNeverGivenAgain)
{
    EXPECT_EQ(manager().register_("a", {}), 1U);
    EXPECT_EQ(manager().register_("", {}), 2U);
    expectError<InvalidRunTimeName>([] { manager().register_("a", {}); }, "a");
    EXPECT_EQ(manager().getId("a"), 1U);
    EXPECT_EQ(manager().getName(2), "");
    EXPECT_TRUE(manager().unregister(1));
    EXPECT_EQ(manager().register_("a", {}), 3U);
    EXPECT_THAT(manager().getIds(), UnorderedElementsAre(2, 3));
}

TEST(RunTimeMgr, UnknownIdsAndNamesAreErrorsThatNameThem)
{
    for (const auto id : {0U, 1U, 4'294'967'295U}) {
        const auto text = std::to_string(id);
        EXPECT_FALSE(manager().hasId(id));
        EXPECT_FALSE(manager().unregister(id));
        expectError<InvalidRunTimeId>([id] { (void)manager().getName(id); }, text);
        expectError<InvalidRunTimeId>([id] { (void)manager().hierarchyHandlerRef(id); }, text);
    }
    expectError<InvalidRunTimeName>([] { (void)manager().getId("nobody"); }, "nobody");
    const auto bare = test::registered("no hierarchy", nullptr);
    expectError<InvalidRunTimeId>([=] { (void)manager().hierarchyHandlerRef(bare); },
                                  std::to_string(bare));
}

TEST(RunTimeMgr, KeepsEachKindOfHandlerApartAndReleasesWhatIsReplaced)
{
    std::vector<std::string> released;
    std::vector<const void*> installed;
    RunTimeMgr::Handlers handlers;
    forEachKind([&]<class H>(std::string kind, std::shared_ptr<H> RunTimeMgr::Handlers::*member,
                             auto, auto) {
        handlers.*member = handlerReleasing<H>([&released, kind] { released.push_back(kind); });
        installed.push_back((handlers.*member).get());
    });
    const auto id = manager().register_("complete", handlers);
    const auto other = manager().register_("incomplete", {});
    handlers = {};

    auto expected = installed.begin();
    forEachKind([&]<class H>(const std::string& kind, std::shared_ptr<H> RunTimeMgr::Handlers::*,
                             auto set, auto get) {
        EXPECT_EQ((manager().*get)(id).get(), *expected++) << kind;
        EXPECT_EQ((manager().*get)(other), nullptr) << kind;
        EXPECT_EQ((manager().*get)(99), nullptr) << kind;
        const auto fresh = handlerReleasing<H>([] {});
        released.clear();
        (manager().*set)(id, fresh);
        EXPECT_THAT(released, testing::ElementsAre(kind));
        EXPECT_EQ((manager().*get)(id), fresh) << kind;
        (manager().*set)(id, nullptr);
        EXPECT_EQ(fresh.use_count(), 1) << kind;
    });
    EXPECT_TRUE(manager().unregister(id)); // null handlers are handlers that can be erased
}

TEST(RunTimeMgr, UnregisteringReleasesTheHandlersInOrderWithTheNameBeforeTheLast)
{
    std::vector<std::string> released;
    std::vector<std::string> kinds;
    RunTimeMgr::Handlers handlers;
    static constexpr Rtid id = 1;
    forEachKind([&]<class H>(std::string kind, std::shared_ptr<H> RunTimeMgr::Handlers::*member,
                             auto, auto) {
        kinds.push_back(kind);
        handlers.*member = handlerReleasing<H>([&released, kind] {
            released.push_back(kind);
            EXPECT_EQ(manager().hasId(id), kind != "batchOps") << kind;
            EXPECT_FALSE(manager().unregister(id)) << kind; // under way: stops at the first kind
        });
    });
    ASSERT_EQ(manager().register_("complete", handlers), id);
    handlers = {};
    EXPECT_TRUE(manager().unregister(id));
    EXPECT_EQ(released, kinds);
    EXPECT_FALSE(manager().unregister(id));
    expectError<InvalidRunTimeName>([] { (void)manager().getId("complete"); }, "complete");
    EXPECT_TRUE(manager().getIds().empty());
    EXPECT_EQ(manager().register_("complete", {}), id + 1);
}

TEST(RunTimeMgr, AMissingHandlerEntryStopsUnregisteringThere)
{
    // The hierarchy handler removes the run-time from under the removal that releases it, and puts
    // part of it back; so the first removal finds an entry gone that it did not erase.
    RunTimeMgr::Handlers handlers;
    static constexpr Rtid id = 1;
    auto again = true;
    handlers.hierarchyHandler = handlerReleasing<HierarchyHandler>([&] {
        if (std::exchange(again, false)) {
            manager().setHierarchyHandler(id, nullptr);
            EXPECT_TRUE(manager().unregister(id));
            manager().setCameraHandler(id, handlerReleasing<CameraHandler>([] {}));
        }
    });
    ASSERT_EQ(manager().register_("stubborn", handlers), id);
    handlers = {};
    EXPECT_FALSE(manager().unregister(id));
    EXPECT_NE(manager().cameraHandler(id), nullptr);
    EXPECT_FALSE(manager().hasId(id));
}

TEST(RunTimeMgr, HandlersCanBeSetForIdsThatNobodyRegistered)
{
    const auto light = handlerReleasing<LightHandler>([] {});
    manager().setLightHandler(42, light);
    EXPECT_EQ(manager().lightHandler(42), light);
    EXPECT_FALSE(manager().hasId(42));
    EXPECT_TRUE(manager().getIds().empty());

    const auto hierarchy = std::make_shared<test::HierarchyStub>();
    manager().setHierarchyHandler(42, hierarchy);
    manager().setHierarchyHandler(7, nullptr);
    EXPECT_THAT(manager().getIds(), UnorderedElementsAre(7, 42));
    EXPECT_EQ(&manager().hierarchyHandlerRef(42), hierarchy.get());
    EXPECT_EQ(hierarchy.use_count(), 2);
    EXPECT_FALSE(manager().unregister(42));
}
