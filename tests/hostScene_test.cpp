#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unordered_set>

#include "kiv/globalSelection.h"
#include "kiv/host/errorChannel.h"
#include "kiv/host/hostScene.h"
#include "kiv/host/runTimeWatch.h"
#include "kiv/observableSelection.h"
#include "kiv/sceneNotification.h"

#include "callback.h"
#include "items.h"
#include "structureEditor.h"

using namespace Kiv_v4;
using host::HostScene;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct Hosted : testing::Test
{
    Hosted() { Scene::initializeInstance(scene); }
    ~Hosted() override { Scene::initializeInstance(nullptr); }

    const std::shared_ptr<HostScene> scene = std::make_shared<HostScene>();
};

} // namespace

TEST_F(Hosted, ChangesReachEveryObserverInTheOrderInWhichTheyHappened)
{
    memory::RunTime runTime;
    auto& model = runTime.model();
    std::vector<std::string> seen[3];
    std::vector<Observer::Ptr> observers;
    for (auto& list : seen) {
        observers.push_back(test::Callback::make([&](const Notification& notification) {
            const auto& change = dynamic_cast<const SceneChanged&>(notification);
            list.push_back(change.changedPath().string());
            if (&list == &seen[1] && list.back() == "/world/a") {
                model.make(model.root(), "mesh", "b");
                const NotificationGuard guard(Scene::instance());
                model.rename(model.root() + "b", "c");
                model.make(model.root(), "mesh", "d");
            }
        }));
        Scene::instance().addObserver(observers.back());
    }
    model.make(model.root(), "mesh", "a");
    for (const auto& list : seen) {
        EXPECT_THAT(list, ElementsAre("/world/a", "/world/b", ""));
    }
}

TEST_F(Hosted, SelectionsHaveTheirItemsWhereTheyAreNow)
{
    memory::RunTime runTime;
    auto& model = runTime.model();
    const auto shown = std::make_shared<ObservableSelection>();
    const auto kept = std::make_shared<Selection>();
    scene->follow(shown, HostScene::Gone::ComesBack);
    scene->follow(kept, HostScene::Gone::Kept);
    const auto group = model.make(model.root(), "group", "g")->path();
    for (const auto* name : {"a", "b", "c"}) {
        const auto item = model.make(group, "mesh", name);
        shown->append(item);
        kept->append(item);
    }
    std::size_t nbNotifications = 0;
    const auto counter = test::Callback::make([&](const auto&) { ++nbNotifications; });
    shown->addObserver(counter);

    model.rename(group, "h");
    EXPECT_THAT(test::pathsOf(*shown), ElementsAre("/world/h/a", "/world/h/b", "/world/h/c"));
    model.move(model.root() + "h" + "b", model.root());
    EXPECT_THAT(test::pathsOf(*shown), ElementsAre("/world/h/a", "/world/b", "/world/h/c"));
    {
        const NotificationGuard batch(*scene); // two change names: no path is what it was
        model.rename(model.root() + "h" + "a", "x");
        model.rename(model.root() + "h" + "c", "a");
        model.rename(model.root() + "h" + "x", "c");
    }
    EXPECT_THAT(test::pathsOf(*shown), ElementsAre("/world/h/c", "/world/b", "/world/h/a"));
    EXPECT_EQ(nbNotifications, 3U) << "one each";

    const auto removal =
        SceneItemOps::sceneItemOps(model.item(model.root() + "h"))->deleteItemCmd();
    removal->execute();
    EXPECT_THAT(test::pathsOf(*shown), ElementsAre("/world/b"));
    removal->undo();
    EXPECT_THAT(test::pathsOf(*shown), ElementsAre("/world/h/c", "/world/b", "/world/h/a"));
    EXPECT_EQ(test::pathsOf(*kept), test::pathsOf(*shown));
    removal->redo();
    EXPECT_EQ(kept->size(), 3U);
    shown->clear();
    removal->undo();
    EXPECT_TRUE(shown->empty()) << "somebody else changed it meanwhile";
    {
        const test::Nested nested;
        model.setGateway(model.root(), nested.id());
        kept->append(nested.items->rootItems(model.root()).front());
        EXPECT_EQ(kept->size(), 4U);
    }
    EXPECT_EQ(kept->size(), 3U) << "the run-time has left";
    EXPECT_TRUE(scene->unfollow(kept));
    EXPECT_FALSE(scene->unfollow(kept));
}

TEST_F(Hosted, SelectionsDropWhatAnInvalidatedSubtreeNoLongerHas)
{
    memory::RunTime runTime;
    auto& model = runTime.model();
    const auto selection = std::make_shared<ObservableSelection>();
    scene->follow(selection, HostScene::Gone::ComesBack);
    const auto group = model.make(model.root(), "group", "g");
    for (const auto* name : {"a", "b"}) {
        selection->append(model.make(group->path(), "mesh", name));
    }
    Scene::initializeInstance(nullptr);
    model.remove(group->path() + "a"); // not announced
    Scene::initializeInstance(scene);
    EXPECT_EQ(selection->size(), 2U);
    scene->notify(SubtreeInvalidate(group));
    EXPECT_THAT(test::pathsOf(*selection), ElementsAre("/world/g/b"));
}

TEST_F(Hosted, SelectionsFollowRandomEditsAsFarAsItemsLive)
{
    test::Random random;
    test::StructureEditor editor(random);
    const auto selection = std::make_shared<ObservableSelection>();
    scene->follow(selection, HostScene::Gone::ComesBack);
    for (auto round = 0; round < 2000; ++round) {
        const auto all = editor.items();
        selection->append(random.of(all));
        if (selection->size() > 20) {
            selection->clear();
        }
        editor.step();
        for (const auto& item : *selection) {
            ASSERT_TRUE(Hierarchy::createItem(item->path())) << item->path().string();
        }
    }
}

TEST_F(Hosted, ErrorsAndRunTimesReachThoseWhoAsk)
{
    std::vector<std::string> errors;
    std::vector<std::string> events;
    const host::ErrorChannel throwing(
        [](const LogRecord&) { throw std::runtime_error("channel"); });
    const host::ErrorChannel channel([&](const LogRecord& record) {
        try {
            std::rethrow_exception(record.error);
        } catch (const std::exception& error) {
            errors.push_back(std::string(record.function) + ": " + error.what());
        }
    });
    const auto watch = std::make_unique<host::RunTimeWatch>([&](RunTimeEvent event, Rtid id) {
        events.push_back(std::to_string(static_cast<int>(event)) +
                         RunTimeMgr::instance().getName(id));
    });
    const auto observer =
        test::Callback::make([](const auto&) { throw std::runtime_error("observer"); });
    scene->addObserver(observer);
    testing::internal::CaptureStderr();
    {
        memory::RunTime runTime;
        runTime.model().make(runTime.model().root(), "mesh", "a");
    }
    const auto text = testing::internal::GetCapturedStderr();
    EXPECT_THAT(text, HasSubstr("caught and silenced exception observer"));
    EXPECT_THAT(text, HasSubstr("An error channel threw channel"));
    EXPECT_THAT(errors, ElementsAre("notify: observer"));
    EXPECT_THAT(events, ElementsAre("0memory", "1memory", "2memory"));
}
