#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kiv/runTimeMgr.h"

#include "stubs.h"

using namespace Kiv_v4;
using test::expectError;
using testing::UnorderedElementsAre;

namespace {

RunTimeMgr& manager = RunTimeMgr::instance();

/// Calls `visit` with the record's member, the setter and the getter of each handler kind, in the
/// order in which a run-time's handlers are released.
template <class Visit>
void forEachKind(Visit visit)
{
    using H = RunTimeMgr::Handlers;
    using M = RunTimeMgr;
    visit(&H::hierarchyHandler, &M::setHierarchyHandler, &M::hierarchyHandler);
    visit(&H::transform3dHandler, &M::setTransform3dHandler, &M::transform3dHandler);
    visit(&H::sceneItemOpsHandler, &M::setSceneItemOpsHandler, &M::sceneItemOpsHandler);
    visit(&H::attributesHandler, &M::setAttributesHandler, &M::attributesHandler);
    visit(&H::connectionHandler, &M::setConnectionHandler, &M::connectionHandler);
    visit(&H::uiNodeGraphNodeHandler, &M::setUINodeGraphNodeHandler, &M::uiNodeGraphNodeHandler);
    visit(&H::object3dHandler, &M::setObject3dHandler, &M::object3dHandler);
    visit(&H::materialHandler, &M::setMaterialHandler, &M::materialHandler);
    visit(&H::contextOpsHandler, &M::setContextOpsHandler, &M::contextOpsHandler);
    visit(&H::uiInfoHandler, &M::setUIInfoHandler, &M::uiInfoHandler);
    visit(&H::cameraHandler, &M::setCameraHandler, &M::cameraHandler);
    visit(&H::lightHandler, &M::setLightHandler, &M::lightHandler);
    visit(&H::pathMappingHandler, &M::setPathMappingHandler, &M::pathMappingHandler);
    visit(&H::nodeDefHandler, &M::setNodeDefHandler, &M::nodeDefHandler);
    visit(&H::sceneSegmentHandler, &M::setSceneSegmentHandler, &M::sceneSegmentHandler);
    visit(&H::batchOpsHandler, &M::setBatchOpsHandler, &M::batchOpsHandler);
}

/// A handler of any kind that the registry cannot tell from a real one, and that does `onRelease`
/// when its last holder releases it.
template <class Handler>
std::shared_ptr<Handler> handlerReleasing(std::function<void()> onRelease)
{
    static int anything;
    return {reinterpret_cast<Handler*>(&anything), [onRelease](auto*) { onRelease(); }};
}

} // namespace

TEST(RunTimeMgr, IdsCountUpFromOneAndAreNeverGivenAgain)
{
    EXPECT_EQ(manager.register_("a", {}), 1U);
    EXPECT_EQ(manager.register_("", {}), 2U);
    expectError<InvalidRunTimeName>([] { manager.register_("a", {}); }, "a");
    EXPECT_EQ(manager.getId("a"), 1U);
    EXPECT_EQ(manager.getName(2), "");
    EXPECT_TRUE(manager.unregister(1));
    EXPECT_FALSE(manager.unregister(1));
    expectError<InvalidRunTimeName>([] { (void)manager.getId("a"); }, "a");
    EXPECT_EQ(manager.register_("a", {}), 3U);
    EXPECT_THAT(manager.getIds(), UnorderedElementsAre(2, 3));
    expectError<InvalidRunTimeId>([] { (void)manager.hierarchyHandlerRef(3); }, "3");
    for (const auto id : {0U, 1U, 4'294'967'295U}) {
        EXPECT_FALSE(manager.hasId(id));
        expectError<InvalidRunTimeId>([id] { (void)manager.getName(id); }, std::to_string(id));
    }
}

TEST(RunTimeMgr, RegistersRunTimesFromInsideTheRegistrationOfAnother)
{
    // Handlers were set for the next id, and use the registry when its run-time replaces them.
    manager.setLightHandler(1, handlerReleasing<LightHandler>([] {
                                EXPECT_FALSE(manager.hasId(1));
                                EXPECT_EQ(manager.register_("inner", {}), 2U);
                            }));
    EXPECT_EQ(manager.register_("outer", {}), 1U);
    EXPECT_EQ(manager.getName(1) + manager.getName(2), "outerinner");

    manager.setLightHandler(3, handlerReleasing<LightHandler>([] { manager.register_("c", {}); }));
    expectError<InvalidRunTimeName>([] { manager.register_("c", {}); }, "c");
    EXPECT_EQ(manager.getId("c"), 4U);
    EXPECT_THAT(manager.getIds(), UnorderedElementsAre(1, 2, 4));
}

TEST(RunTimeMgr, KeepsEachKindOfHandlerApartAndReleasesWhatIsReplaced)
{
    RunTimeMgr::Handlers handlers;
    std::vector<std::shared_ptr<void>> seenAtRelease;
    forEachKind([&]<class H>(std::shared_ptr<H> RunTimeMgr::Handlers::*member, auto, auto get) {
        handlers.*member =
            handlerReleasing<H>([&, get] { seenAtRelease.push_back((manager.*get)(1)); });
    });
    ASSERT_EQ(manager.register_("complete", handlers), 1U);
    const auto other = manager.register_("incomplete", {});
    forEachKind([&]<class H>(std::shared_ptr<H> RunTimeMgr::Handlers::*member, auto set, auto get) {
        EXPECT_FALSE((handlers.*member).owner_before((manager.*get)(1)) ||
                     (manager.*get)(1).owner_before(handlers.*member));
        EXPECT_EQ((manager.*get)(other), nullptr);
        EXPECT_EQ((manager.*get)(99), nullptr);
        (handlers.*member).reset();
        const auto fresh = handlerReleasing<H>([] {});
        (manager.*set)(1, fresh);
        EXPECT_THAT(seenAtRelease, testing::ElementsAre(fresh));
        EXPECT_EQ(fresh.use_count(), 3);
        seenAtRelease.clear();
        (manager.*set)(1, nullptr);
        EXPECT_EQ(fresh.use_count(), 1);
    });
    EXPECT_TRUE(manager.unregister(1)); // null handlers are handlers that can be erased
}

TEST(RunTimeMgr, UnregisteringReleasesTheHandlersInOrderWithTheNameBeforeTheLast)
{
    constexpr int kKinds = 16;
    std::vector<int> released;
    std::vector<int> expected;
    RunTimeMgr::Handlers handlers;
    forEachKind([&]<class H>(std::shared_ptr<H> RunTimeMgr::Handlers::*member, auto, auto) {
        const auto kind = static_cast<int>(expected.size());
        expected.push_back(kind);
        handlers.*member = handlerReleasing<H>([&released, kind] {
            released.push_back(kind);
            EXPECT_EQ(manager.hasId(1), kind != kKinds - 1) << kind;
            EXPECT_FALSE(manager.unregister(1)) << kind; // under way: stops at the first kind
        });
    });
    ASSERT_EQ(manager.register_("complete", std::exchange(handlers, {})), 1U);
    EXPECT_TRUE(manager.unregister(1));
    EXPECT_EQ(released, expected);
    EXPECT_TRUE(manager.getIds().empty());
}

TEST(RunTimeMgr, AMissingHandlerEntryStopsUnregisteringThere)
{
    // Each handler puts back what went before it and removes the run-time from under the removal
    // that releases it; so that removal finds an entry, or at last the name, gone.
    const auto last = handlerReleasing<BatchOpsHandler>([] {});
    std::vector<std::function<void(Rtid)>> putBack;
    forEachKind([&]<class H>(std::shared_ptr<H> RunTimeMgr::Handlers::*, auto set, auto) {
        if constexpr (!std::is_same_v<H, BatchOpsHandler>) {
            putBack.push_back([set](Rtid id) { (manager.*set)(id, nullptr); });
            const auto id = manager.register_("stubborn", {});
            const auto undermine = [&] {
                std::for_each(putBack.begin(), putBack.end(), [id](auto& put) { put(id); });
                EXPECT_TRUE(manager.unregister(id));
                manager.setBatchOpsHandler(id, last);
            };
            (manager.*set)(id, handlerReleasing<H>(undermine));
            EXPECT_FALSE(manager.unregister(id) || manager.hasId(id)) << putBack.size();
            EXPECT_EQ(manager.batchOpsHandler(id), last) << putBack.size();
        }
    });
}

TEST(RunTimeMgr, HandlersCanBeSetForIdsThatNobodyRegistered)
{
    const auto hierarchy = std::make_shared<test::HierarchyStub>();
    manager.setHierarchyHandler(42, hierarchy);
    manager.setHierarchyHandler(7, nullptr);
    EXPECT_THAT(manager.getIds(), UnorderedElementsAre(7, 42));
    EXPECT_EQ(&manager.hierarchyHandlerRef(42), hierarchy.get());
    EXPECT_EQ(hierarchy.use_count(), 2);
    EXPECT_FALSE(manager.hasId(42));
    EXPECT_FALSE(manager.unregister(42));
}
