#include <dlfcn.h>
#include <gmock/gmock.h>

#include "plugin/plugin.h"

using namespace Kiv_v4;

namespace {

SceneItem::Ptr create(const std::string& text)
{
    return Hierarchy::createItem(PathString::path(text));
}

/// What the host is left with once the plug-in is gone.
struct Left
{
    Value note; ///< Made in the plug-in.
    std::unique_ptr<Transform3dPathSubject> follower;
};

/// Uses the plug-in's run-time.
Left used(plugin::Load* load)
{
    enum class HostError { UnwantedItem };
    const auto listener = std::make_shared<plugin::Listener>();
    listener->made = [](const SceneItem& item) {
        if (item.nodeName() == "unwanted") {
            throw HostError::UnwantedItem;
        }
    };
    std::shared_ptr<void> plugin;
    load(listener, plugin);
    EXPECT_THROW(create("!refused"), plugin::Refused);
    EXPECT_THROW(create("!refused"), InvalidPath);
    EXPECT_THROW(create("!unwanted"), HostError);
    const auto item = std::dynamic_pointer_cast<plugin::Item>(create("!item"));
    EXPECT_EQ(PathString::path("own"), PathString::path("!item"));
    EXPECT_EQ(PathString::path("~item").runTimeId(), item->runTimeId());
    EXPECT_NE(getRawAddress(SceneItem::Ptr(item)), 0U);
    EXPECT_TRUE(Transform3d::hasObservers(PathString::path("!observed")));
    Scene::instance().notify(ObjectAdd(item));
    Camera::addObserver(item, std::make_shared<Observer>()); // released, but never removed
    return {item->note(), std::make_unique<Transform3dPathSubject>(item->path())};
}

} // namespace

TEST(Plugin, LeavesNothingBehindHoweverOftenItIsLoadedAndUnloaded)
{
    Scene::initializeInstance(std::make_shared<Scene>());
    for (int round = 0; round < 100; ++round) {
        const auto object = dlopen(KIV_TEST_PLUGIN, RTLD_NOW | RTLD_LOCAL);
        ASSERT_TRUE(object) << dlerror();
        auto left = used(reinterpret_cast<plugin::Load*>(dlsym(object, "load")));
        ASSERT_FALSE(dlclose(object) || dlopen(KIV_TEST_PLUGIN, RTLD_NOW | RTLD_NOLOAD));

        // Whatever were left would lead into code and data that are gone.
        EXPECT_EQ(left.note.get<std::string>(), "from the plug-in");
        EXPECT_TRUE(left.note.isType<std::string>());
        const auto item = left.follower->path();
        EXPECT_FALSE(Transform3d::hasObservers(item) || Camera::hasObservers(item));
        left.follower.reset();
        EXPECT_TRUE(RunTimeMgr::instance().getIds().empty());
        EXPECT_EQ(Scene::instance().nbObservers(), 0U);
        EXPECT_EQ(getRawAddress(SceneItem::Ptr()), 0U);
        for (const auto* text : {"!item", "~item", "own"}) {
            EXPECT_THROW(create(text), InvalidPath);
        }
    }
    Scene::initializeInstance(nullptr);
}
