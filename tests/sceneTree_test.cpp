#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

#include "kiv/host/hostScene.h"
#include "kiv/host/sceneTree.h"
#include "kiv/sceneNotification.h"

#include "callback.h"
#include "items.h"
#include "strictMirror.h"
#include "structureEditor.h"

using namespace Kiv_v4;
using host::HostScene;
using host::SceneTree;
using testing::ElementsAre;

namespace {

struct Tree : testing::Test
{
    Tree() { Scene::initializeInstance(std::make_shared<HostScene>()); }
    ~Tree() override { Scene::initializeInstance(nullptr); }

    static std::vector<std::string> namesUnder(const SceneTree::Node& node)
    {
        std::vector<std::string> names;
        for (std::size_t row = 0; row < node.nbRows(); ++row) {
            names.push_back(node.child(row).name());
        }
        return names;
    }

    static void fetchAll(SceneTree& tree)
    {
        for (std::vector<SceneTree::Node*> open{&tree.root()}; !open.empty();) {
            auto& node = *open.back();
            open.pop_back();
            tree.fetch(node);
            for (std::size_t row = 0; row < node.nbRows(); ++row) {
                open.push_back(&node.child(row));
            }
        }
    }
};

} // namespace

TEST_F(Tree, IsWhatAFreshWalkSeesAfterEachRandomEdit)
{
    test::Random random;
    test::StructureEditor editor(random);
    SceneTree tree;
    test::StrictMirror mirror(tree);
    tree.fetch(tree.root());
    const auto meddler = test::Callback::make([&](const Notification& notification) {
        const auto* added = dynamic_cast<const ObjectAdd*>(&notification);
        if (added && added->item()->nodeName() == "a" && random.below(4) == 0) {
            editor.model.make(editor.model.root(), "mesh",
                              editor.model.uniqueName(editor.model.root(), "inner"));
        }
    });
    Scene::instance().addObserver(meddler);
    const ChildFilter withoutMounted{{"mounted", "", false}};
    for (auto round = 0; round < 3000; ++round) {
        editor.step();
        mirror.compareWithScene();
        if (random.below(3) == 0) {
            const auto all = editor.items();
            if (auto* node = tree.find(random.of(all)->path())) {
                tree.fetch(*node,
                           random.below(2) == 0 ? SceneTree::kFetchAll : 1 + random.below(3));
            }
        }
        if (random.below(500) == 0) {
            const memory::RunTime other("other", "others");
            ASSERT_TRUE(tree.find(other.model().root()));
            mirror.compareWithScene();
        }
        if (random.below(100) == 0) {
            tree.refresh();
        }
        if (random.below(100) == 0) {
            tree.setFilter(tree.filter().empty() ? withoutMounted : ChildFilter());
        }
    }
}

TEST_F(Tree, KeepsNodesThroughRenamesMovesOrdersAndGroups)
{
    memory::RunTime runTime;
    auto& model = runTime.model();
    for (const auto* name : {"a", "b", "c", "d"}) {
        model.make(model.make(model.root(), "group", name)->path(), "mesh", "part");
    }
    SceneTree tree;
    test::StrictMirror mirror(tree);
    fetchAll(tree);
    auto& world = *tree.find(model.root());
    auto* const a = &world.child(0);
    auto* const part = &a->child(0);
    const auto inserted = mirror.nbInserted;

    model.rename(a->path(), "z");
    model.move(a->path(), world.child(2).path());
    EXPECT_EQ(part->item()->path(), model.item(part->path())->path());
    const auto ordered = Hierarchy::hierarchy(world.item())->children();
    const auto moved = mirror.nbMoved;
    ASSERT_TRUE(Hierarchy::hierarchy(world.item())
                    ->reorder({ordered.back(), ordered.front(), *std::next(ordered.begin())}));
    EXPECT_EQ(mirror.nbMoved, moved + 1) << "one row moves, not three";
    EXPECT_THAT(namesUnder(world), ElementsAre("d", "b", "c"));
    EXPECT_EQ(world.child(2).row(), 2U);
    Scene::instance().notify(SubtreeInvalidate(world.item()));
    EXPECT_EQ(mirror.nbInserted, inserted) << "what is the same stays";
    EXPECT_EQ(mirror.nbRemoved, 0U);

    const auto group =
        Hierarchy::hierarchy(world.item())
            ->createGroupCmd({world.child(0).item(), world.child(2).item()}, std::string("group"));
    auto* const d = &world.child(0);
    group->execute();
    EXPECT_EQ(d->parent()->name(), "group");
    EXPECT_EQ(mirror.nbRemoved, 0U);
    group->undo();
    EXPECT_EQ(d, &world.child(0));
    mirror.compareWithScene();
}

TEST_F(Tree, LosesARunTimeThatLeavesAndShowsOneThatComes)
{
    memory::RunTime runTime;
    SceneTree tree;
    test::StrictMirror mirror(tree);
    tree.fetch(tree.root());
    std::optional<test::Nested> nested(std::in_place);
    EXPECT_THAT(namesUnder(tree.root()), ElementsAre("world", "stage"));
    runTime.model().setGateway(runTime.model().root(), nested->id());
    auto* world = tree.find(runTime.model().root());
    tree.fetch(*world);
    EXPECT_THAT(namesUnder(*world), ElementsAre("stage"));
    nested.reset();
    EXPECT_THAT(namesUnder(tree.root()), ElementsAre("world"));
    EXPECT_EQ(world->nbRows(), 0U);
    mirror.compareWithScene(true);
}

TEST_F(Tree, RevealsAPathAndFetchesNoMoreThanAsked)
{
    memory::RunTime runTime;
    auto& model = runTime.model();
    auto path = model.root();
    for (const auto* name : {"a", "b", "c"}) {
        model.make(path, "mesh", "sibling");
        path = model.make(path, "group", name)->path();
    }
    SceneTree tree;
    auto* node = tree.reveal(path);
    ASSERT_TRUE(node);
    EXPECT_EQ(node->path(), path);
    EXPECT_EQ(node->parent()->row(), 1U);
    EXPECT_FALSE(tree.canFetch(*node));
    EXPECT_FALSE(tree.reveal(path + "nothing"));
    EXPECT_FALSE(tree.canFetch(*tree.find(path.pop().pop())));
}
