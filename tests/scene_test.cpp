#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "kiv/notificationGuard.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"
#include "kiv/subtreeObserver.h"

#include "callback.h"
#include "paths.h"
#include "stubs.h"

using namespace Kiv_v4;
using test::Callback;
using test::itemAt;
using test::notation;
using test::path;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// Writes down what its observer and its hooks see.
class RecordingScene : public Scene
{
public:
    RecordingScene() { addObserver(_observer); }

    std::vector<std::string> events;
    bool hooksThrow = false;

protected:
    void postNotifyObjectAdd(const ObjectAdd& change) override { hook("add", change); }
    void postNotifyObjectDelete(const ObjectDelete& change) override { hook("delete", change); }
    void postNotifyObjectPathChange(const ObjectPathChange& change) override
    {
        hook("path change", change);
    }
    void postNotifySubtreeInvalidate(const SubtreeInvalidate& change) override
    {
        hook("invalidate", change);
    }
    void postNotifySceneCompositeChange(const SceneCompositeNotification& change) override
    {
        hook("composite", change);
    }

private:
    static std::string textOf(const SceneChanged& change)
    {
        std::string text = change.changedPath().string();
        if (const auto* composite = dynamic_cast<const SceneCompositeNotification*>(&change)) {
            for (const auto& op : *composite) {
                text += "[" + std::to_string(op.opType) + std::to_string(op.subOpType) + " " +
                        op.path.string() + (op.item ? " of " + op.item->path().string() : "") + "]";
            }
        }
        return text;
    }

    void hook(const std::string& name, const SceneChanged& change)
    {
        events.push_back(name + " hook " + textOf(change));
        if (hooksThrow) {
            throw std::runtime_error("hook");
        }
    }

    Observer::Ptr _observer = Callback::make([this](const Notification& notification) {
        events.push_back("observer " + textOf(dynamic_cast<const SceneChanged&>(notification)));
    });
};

class SceneTest : public testing::Test
{
protected:
    SceneTest() { Scene::initializeInstance(scene); }
    ~SceneTest() override { Scene::initializeInstance(nullptr); }

    std::shared_ptr<RecordingScene> scene = std::make_shared<RecordingScene>();
};

} // namespace

TEST_F(SceneTest, IsInstalledOnceUntilItIsCleared)
{
    test::expectError<std::invalid_argument>(
        [] { Scene::initializeInstance(std::make_shared<Scene>()); },
        "Cannot initialize scene instance more than once.");
    EXPECT_EQ(&Scene::instance(), scene.get());
    Scene::initializeInstance(nullptr);
    Scene::initializeInstance(nullptr);
    EXPECT_FALSE(Scene::hasInstance());
    const auto next = std::make_shared<Scene>();
    Scene::initializeInstance(next);
    EXPECT_EQ(&Scene::instance(), next.get());
}

TEST(SceneNotification, TellsAlikeItselfAndAsAnOpOfAComposite)
{
    const auto item = itemAt("/a/b");
    const auto old = path("/a/old");
    const auto expect = [](const SceneChanged& change, int opType, int subOpType,
                           const SceneItem::Ptr& changedItem, const Path& changedPath) {
        SCOPED_TRACE(testing::Message() << opType << '.' << subOpType);
        EXPECT_EQ(change.opType(), opType);
        EXPECT_EQ(change.subOpType(), subOpType);
        EXPECT_EQ(change.changedPath(), changedPath);
        const SceneCompositeNotification::Op op(change);
        EXPECT_EQ(op.opType, opType);
        EXPECT_EQ(op.subOpType, subOpType);
        EXPECT_EQ(op.item, changedItem);
        EXPECT_EQ(op.path, changedPath);
        SceneCompositeNotification batch;
        batch.appendOp(op);
        batch.appendOp(op);
        std::vector<Path> visited;
        const auto visit = [&visited](const auto& each) { visited.push_back(each.path); };
        forEachOp(batch, visit);
        forEachOp(change, visit);
        forEachOp(Notification(), visit);
        const auto nbOwn = opType == SceneChanged::Composite ? 0U : 1U;
        EXPECT_EQ(visited, std::vector<Path>(2 + nbOwn, changedPath));
    };
    expect(ObjectAdd(item), 0, 0, item, item->path());
    expect(ObjectDelete(old), 1, 0, nullptr, old);
    expect(ObjectPostDelete(item), 1, 1, item, item->path());
    expect(ObjectPreDelete(item), 1, 2, item, item->path());
    expect(ObjectDestroyed(old), 1, 3, nullptr, old);
    expect(ObjectPathChange(), 2, 0, nullptr, Path());
    expect(ObjectRename(item, old), 2, 1, item, old);
    expect(ObjectReparent(item, old), 2, 2, item, old);
    expect(ObjectPathAdd(item), 2, 3, item, item->path());
    expect(ObjectPathRemove(old), 2, 4, nullptr, old);
    expect(SubtreeInvalidate(item), 3, 0, item, item->path());
    expect(SceneCompositeNotification(), 4, 0, nullptr, Path());
    // Those that claim to be another class than they are carry no item.
    expect(ObjectDelete(old, ObjectDelete::PreDelete), 1, 2, nullptr, old);
    expect(ObjectPathChange(ObjectPathChange::Renamed), 2, 1, nullptr, Path());
}

TEST(SubtreeObserver, HearsOfItsItemsAndTheirAncestorsAndOfWhatComesIn)
{
    auto received = 0;
    SubtreeObserver observer(path("/a/b"), [&received](const auto&) { ++received; });
    const auto expect = [&](const SceneChanged& change, bool isAbout) {
        SceneCompositeNotification batch;
        batch.appendSceneChanged(change);
        received = 0;
        observer(change);
        observer(batch);
        EXPECT_EQ(received, isAbout ? 2 : 0) << notation(change.changedPath());
    };
    expect(ObjectAdd(itemAt("/a/b/c")), true);
    expect(ObjectAdd(itemAt("/a/bb")), false);
    expect(ObjectDestroyed(path("/a")), true);
    expect(ObjectDestroyed(path("/a/b|:c")), true);
    expect(ObjectDestroyed(path("/a|:b")), false);
    expect(ObjectRename(itemAt("/a/c"), path("/a/b")), true);
    expect(ObjectRename(itemAt("/a/d"), path("/a/c")), false);
    expect(ObjectReparent(itemAt("/a/b/d"), path("/d")), true);
    expect(ObjectReparent(itemAt("/d"), path("/a/b/d")), true);
    expect(ObjectPathChange(), false);
    expect(SubtreeInvalidate(itemAt("/a")), true);
    observer(Notification());
}

TEST_F(SceneTest, DeliversEachChangeAndThenRunsItsHook)
{
    scene->notify(ObjectAdd(itemAt("/a")));
    scene->notify(ObjectPreDelete(itemAt("/b")));
    scene->notify(ObjectRename(itemAt("/c"), path("/d")));
    scene->notify(SubtreeInvalidate(itemAt("/e")));
    scene->notify(SceneCompositeNotification());
    EXPECT_THAT(scene->events, ElementsAre("observer /a", "add hook /a",         //
                                           "observer /b", "delete hook /b",      //
                                           "observer /d", "path change hook /d", //
                                           "observer /e", "invalidate hook /e",  //
                                           "observer "));
}

TEST_F(SceneTest, GathersUnderAGuardAndFlattensComposites)
{
    {
        const NotificationGuard guard(*scene);
        scene->notify(ObjectAdd(itemAt("/a")));
        {
            const NotificationGuard inner(*scene);
            scene->notify(ObjectRename(itemAt("/new"), path("/old")));
        }
        SceneCompositeNotification composite;
        composite.appendSceneChanged(ObjectDestroyed(path("/b")));
        composite.appendSceneChanged(ObjectPathRemove(path("/c")));
        scene->notify(composite);
        EXPECT_THAT(scene->events, IsEmpty());
    }
    const std::string ops = "[00 /a of /a][21 /old of /new][13 /b][24 /c]";
    EXPECT_THAT(std::exchange(scene->events, {}),
                ElementsAre("observer " + ops, "composite hook " + ops));
    {
        const NotificationGuard guard(*scene);
    }
    EXPECT_THAT(scene->events, ElementsAre("observer ", "composite hook "));
}

TEST_F(SceneTest, TakesItsDecisionsOnTheInstalledScene)
{
    RecordingScene other;
    other.notify(ObjectAdd(itemAt("/a")));
    EXPECT_THAT(other.events, ElementsAre("observer /a"));
    EXPECT_THAT(scene->events, ElementsAre("add hook /a"));
    {
        const NotificationGuard guard(*scene);
        other.notify(ObjectAdd(itemAt("/b")));
    }
    EXPECT_THAT(other.events, ElementsAre("observer /a"));
    EXPECT_THAT(scene->events, ElementsAre("add hook /a", "observer [00 /b of /b]",
                                           "composite hook [00 /b of /b]"));
}

TEST_F(SceneTest, LetsTheExceptionOfAHookPassAndIsReadyAgain)
{
    scene->hooksThrow = true;
    EXPECT_THROW(scene->notify(ObjectAdd(itemAt("/a"))), std::runtime_error);
    scene->beginNotificationGuard();
    EXPECT_THROW(scene->endNotificationGuard(), std::runtime_error);
    EXPECT_FALSE(scene->inCompositeNotification());
    EXPECT_DEATH(NotificationGuard{*scene}, "");
}

TEST(SceneDeathTest, IsReleasedAtTheEndOfTheProcessAndMayStillBeAskedForBehindIt)
{
    class LastScene : public Scene
    {
    public:
        ~LastScene() override { std::cerr << "released, "; }
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a fresh process
    EXPECT_EXIT(
        {
            std::atexit([] { std::cerr << (Scene::hasInstance() ? "there" : "gone"); });
            Scene::initializeInstance(std::make_shared<LastScene>());
            std::exit(0);
        },
        testing::ExitedWithCode(0), HasSubstr("released, gone"));
}
