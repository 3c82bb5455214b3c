#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kiv/hierarchy.h"
#include "kiv/memory/runTime.h"
#include "kiv/pathString.h"

using namespace Kiv_v4;
using testing::ElementsAre;

namespace {

std::vector<std::string> childPaths(const SceneItem::Ptr& item)
{
    std::vector<std::string> paths;
    for (const auto& child : Hierarchy::hierarchy(item)->children()) {
        paths.push_back(PathString::string(child->path()));
    }
    return paths;
}

struct MemoryScene : testing::Test
{
    memory::RunTime runTime;
    memory::DataModel& model = runTime.model();
    SceneItem::Ptr world = model.item(model.root());
};

} // namespace

TEST_F(MemoryScene, IsBrowsedThroughTheLibrary)
{
    const auto props = model.make(model.root(), "group", "props");
    model.make(model.root(), "camera", "main");
    const auto cube = model.make(props->path(), "mesh", "cube");

    EXPECT_THAT(childPaths(world), ElementsAre("/world/props", "/world/main"));
    const auto found = Hierarchy::createItem(PathString::path("/world/props/cube"));
    ASSERT_TRUE(found);
    EXPECT_EQ(*found, *cube);
    EXPECT_EQ(found->nodeType(), "mesh");
    EXPECT_EQ(*Hierarchy::hierarchy(found)->parent(), *props);
    EXPECT_FALSE(Hierarchy::hierarchy(found)->hasChildren());
    EXPECT_FALSE(Hierarchy::hierarchy(world)->parent());
    EXPECT_FALSE(Hierarchy::createItem(PathString::path("/world/nothing")));
}

TEST_F(MemoryScene, KeepsWholeSubtreesThroughRenameMoveAndRemove)
{
    const auto a = model.make(model.root(), "group", "a");
    const auto b = model.make(model.root(), "group", "b");
    model.make(model.make(a->path(), "group", "inner")->path(), "mesh", "leaf");

    const auto c = model.rename(a->path(), "c");
    EXPECT_FALSE(model.item(a->path()));
    EXPECT_THAT(childPaths(world), ElementsAre("/world/c", "/world/b"));
    model.move(c->path(), b->path());
    EXPECT_TRUE(model.item(PathString::path("/world/b/c/inner/leaf")));
    EXPECT_EQ(model.size(), 5U);
    model.remove(b->path());
    EXPECT_EQ(model.size(), 1U);
    model.make(model.root(), "group", "b");
    EXPECT_THAT(childPaths(world), ElementsAre("/world/b")) << "nothing of the old b is left";
}

TEST_F(MemoryScene, RefusesWhatWouldBreakItAndStaysAsItWas)
{
    const auto a = model.make(model.root(), "group", "a");
    const auto inner = model.make(a->path(), "group", "inner");
    const auto gone = model.make(model.root(), "group", "gone");
    model.remove(gone->path());

    for (const auto* name : {"", "x/y", "x,y", "x\ny", "a"}) {
        EXPECT_THROW(model.make(model.root(), "group", name), std::invalid_argument) << name;
    }
    EXPECT_THROW(model.rename(model.root(), "earth"), std::invalid_argument);
    EXPECT_THROW(model.rename(inner->path(), "x,y"), std::invalid_argument);
    EXPECT_THROW(model.move(a->path(), inner->path()), std::invalid_argument);
    EXPECT_THROW(model.move(a->path(), gone->path()), std::invalid_argument);
    EXPECT_THROW(model.remove(gone->path()), std::invalid_argument);
    EXPECT_EQ(model.rename(a->path(), "a")->path(), a->path()) << "its own name is not taken";
    EXPECT_EQ(model.size(), 3U);
    EXPECT_EQ(model.uniqueName(model.root(), "a"), "a1");
    EXPECT_EQ(model.uniqueName(model.root(), "x,y/z\n"), "x_y_z_");
    EXPECT_EQ(model.uniqueName(model.root(), ""), "_");
}

TEST_F(MemoryScene, IsRegisteredOnlyWhileItsRunTimeLives)
{
    EXPECT_THROW(memory::RunTime(), InvalidRunTimeName);
    EXPECT_THROW(memory::RunTime("bad root", "a/b"), std::invalid_argument);
    Rtid id = 0;
    for (auto i = 0; i < 3; ++i) {
        const memory::RunTime second("second", "stage");
        EXPECT_GT(second.id(), id);
        id = second.id();
        second.model().make(second.model().root(), "mesh", "cube");
        EXPECT_TRUE(Hierarchy::createItem(PathString::path("/stage/cube")));
        EXPECT_EQ(PathString::path("/world").runTimeId(), runTime.id());
    }
    EXPECT_FALSE(RunTimeMgr::instance().hasId(id));
    EXPECT_THAT(PathString::pathComponentSeparatorRunTimeIds('/'), ElementsAre(runTime.id()));
}

TEST_F(MemoryScene, HoldsADeepTreeWithoutRecursion)
{
    auto path = model.root();
    for (auto i = 0; i < 3000; ++i) {
        path = model.make(path, "group", "n")->path();
    }
    EXPECT_EQ(model.size(), 3001U);
    model.remove(path.head(2));
    EXPECT_EQ(model.size(), 1U);
}
