#include <clocale>
#include <cstdlib>
#include <dlfcn.h>
#include <gmock/gmock.h>

#include "kiv/globalSelection.h"
#include "kiv/hierarchyHandler.h"
#include "kiv/host/pluginLoader.h"
#include "kiv/observableSelection.h"
#include "kiv/pathString.h"
#include "kiv/plugin.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"
#include "kiv/versionInfo.h"

#include "callback.h"

using namespace Kiv_v4;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string pluginFile(const std::string& kind)
{
    return KIV_PLUGINS "/plugin" + kind + ".so";
}

bool isMapped(const std::string& file)
{
    auto* object = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    return object && dlclose(object) == 0;
}

SceneItem::Ptr topItem()
{
    return Hierarchy::createItem(PathString::path("!top"));
}

struct PluginLoading : testing::Test
{
    PluginLoading()
    {
        std::setlocale(LC_MESSAGES, "C"); // for the reasons that the system gives
        Scene::initializeInstance(std::make_shared<Scene>());
        Scene::instance().addObserver(observer);
        GlobalSelection::initializeInstance(std::make_shared<ObservableSelection>());
    }

    ~PluginLoading() override
    {
        GlobalSelection::initializeInstance(nullptr);
        Scene::initializeInstance(nullptr);
    }

    int nbDestroyed = 0;
    const Observer::Ptr observer = test::Callback::make([this](const Notification& notification) {
        nbDestroyed += dynamic_cast<const ObjectDestroyed*>(&notification) ? 1 : 0;
    });
    host::PluginLoader loader;
};

} // namespace

TEST_F(PluginLoading, LoadsUsesAndUnloadsAHundredTimes)
{
    EXPECT_EQ(int(PluginInfo::kInterfaceMajor), VersionInfo::getMajorVersion());
    EXPECT_EQ(int(PluginInfo::kInterfaceMinor), VersionInfo::getMinorVersion());
    const auto file = pluginFile("Right");
    for (int round = 0; round < 100; ++round) {
        const auto plugin = loader.load(file);
        ASSERT_EQ(plugin.runTimes.size(), 1U);
        EXPECT_EQ(topItem()->nodeType(), "loaded");
        EXPECT_EQ(topItem()->runTimeId(), plugin.runTimes.front());
        GlobalSelection::get()->append(topItem());
        ASSERT_THAT(loader.unload("test plug-in"), IsEmpty());
        ASSERT_FALSE(isMapped(file));
        EXPECT_TRUE(GlobalSelection::get()->empty());
        EXPECT_TRUE(RunTimeMgr::instance().getIds().empty());
    }
    EXPECT_EQ(nbDestroyed, 100);
    EXPECT_THROW(loader.unload("test plug-in"), std::invalid_argument);
}

TEST_F(PluginLoading, RefusesWhatDoesNotFitInOneLineAndLeavesEverythingAsItWas)
{
    const auto right = loader.load(pluginFile("Right"));
    const std::pair<std::string, std::string> refusals[] = {
        {pluginFile("OtherMajor"), "it was built against interface 5.2, this host offers 4.2"},
        {pluginFile("NewerMinor"), "it was built against interface 4.3, this host offers 4.2"},
        {pluginFile("Unfinished"), "not a plug-in: a name or a function is missing"},
        {pluginFile("MissingSymbol"), "undefined symbol: _Z14definedNowherev"},
        {KIV_NO_PLUGIN, "not a plug-in: missing function 'kivPlugin'"},
        {"nowhere.so", "cannot open shared object file: No such file or directory"},
        {KIV_PLUGINS "/CTestTestfile.cmake", "invalid ELF header"},
    };
    for (const auto& [file, reason] : refusals) {
        const auto refused = loader.load(std::vector<std::string>{file});
        ASSERT_EQ(refused.size(), 1U) << file;
        EXPECT_EQ(refused[0].what(), "cannot load the plug-in '" + file + "': " + reason);
        EXPECT_EQ(refused[0].file(), file);
        EXPECT_FALSE(isMapped(file));
    }
    EXPECT_THAT(
        loader.load({right.file, pluginFile("Throwing")}),
        ElementsAre(testing::Property(&host::PluginError::what,
                                      testing::HasSubstr("'test plug-in' is already loaded")),
                    testing::_));
    EXPECT_EQ(loader.plugins().size(), 1U);
    EXPECT_EQ(RunTimeMgr::instance().getIds(), std::list<Rtid>{right.runTimes.front()});

    ASSERT_THAT(loader.unload(right.name), IsEmpty());
    try {
        loader.load(pluginFile("Throwing"));
        FAIL();
    } catch (const host::PluginError& error) {
        EXPECT_EQ(error.what(), "cannot load the plug-in '" + pluginFile("Throwing") +
                                    "': no licence, said the server");
    }
    EXPECT_FALSE(isMapped(pluginFile("Throwing")));
    EXPECT_TRUE(RunTimeMgr::instance().getIds().empty());
}

TEST_F(PluginLoading, SaysWhatHoldsOnAndKeepsTheCodeForIt)
{
    loader.load(pluginFile("Right"));
    auto kept = topItem();
    loader.onUnload([&](const host::Plugin& plugin) {
        return kept && kept->runTimeId() == plugin.runTimes.front()
                   ? std::vector<std::string>{"the clipboard"}
                   : std::vector<std::string>{};
    });
    EXPECT_THAT(loader.unload("test plug-in"), ElementsAre("the clipboard"));
    EXPECT_TRUE(topItem());
    kept.reset();
    EXPECT_THAT(loader.unload("test plug-in"), IsEmpty());

    loader.load(pluginFile("Right"));
    auto handler = RunTimeMgr::instance().hierarchyHandler(RunTimeMgr::instance().getId("loaded"));
    EXPECT_THAT(loader.unload("test plug-in"), ElementsAre("somebody keeps a hierarchy handler"));
    EXPECT_TRUE(isMapped(pluginFile("Right")));
    EXPECT_EQ(handler->rootItems(Path()).size(), 1U);
    handler.reset();

    const auto id = loader.load(pluginFile("Leaving")).runTimes.front();
    EXPECT_THAT(loader.unload("test plug-in"),
                ElementsAre("the run-time 'loaded' is still registered"));
    EXPECT_TRUE(topItem());
    RunTimeMgr::instance().unregister(id);
}

TEST_F(PluginLoading, TakesFoldersAndThePathOfTheEnvironment)
{
    const auto inFolder = host::PluginLoader::filesIn(KIV_PLUGINS);
    EXPECT_THAT(inFolder, testing::Contains(pluginFile("Right")));
    EXPECT_TRUE(std::is_sorted(inFolder.begin(), inFolder.end()));
    EXPECT_THROW(static_cast<void>(host::PluginLoader::filesIn("/nowhere")), host::PluginError);

    const auto path = pluginFile("Right") + "::/nowhere:" + KIV_PLUGINS;
    setenv(host::PluginLoader::kPathVariable, path.c_str(), 1);
    auto expected = inFolder;
    expected.insert(expected.begin(), pluginFile("Right"));
    EXPECT_EQ(host::PluginLoader::filesOnPath(), expected);
    unsetenv(host::PluginLoader::kPathVariable);
    EXPECT_THAT(host::PluginLoader::filesOnPath(), IsEmpty());
}
