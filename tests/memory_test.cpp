#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "kiv/batchOpsHandler.h"
#include "kiv/compositeUndoableCommand.h"
#include "kiv/contextOps.h"
#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/host/undoHistory.h"
#include "kiv/pathString.h"
#include "kiv/sceneItemOps.h"
#include "kiv/sceneNotification.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selectionCommands.h"
#include "kiv/undoableCommandGuard.h"

#include "items.h"
#include "memoryScene.h"
#include "modelledHistory.h"
#include "random.h"

using namespace Kiv_v4;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;
using Known = std::set<std::string>;
using MemoryModel = test::MemoryScene;

Known asSet(const Texts& texts)
{
    return {texts.begin(), texts.end()};
}

/// Learns the set of paths from the scene's notifications alone.
class Mirror : public Observer
{
public:
    explicit Mirror(Known known) : paths(std::move(known)) {}

    void operator()(const Notification& notification) override
    {
        const auto& change = dynamic_cast<const SceneChanged&>(notification);
        if (const auto* all = dynamic_cast<const SceneCompositeNotification*>(&change)) {
            for (const auto& op : *all) {
                apply(op);
            }
        } else {
            apply(SceneCompositeNotification::Op(change));
        }
    }

    Known paths;
    std::size_t nbHeard = 0;

private:
    void apply(const SceneCompositeNotification::Op& op)
    {
        ++nbHeard;
        const auto path = PathString::string(op.path);
        if (op.opType == SceneChanged::Added) {
            paths.merge(asSet(test::pathsOf(test::allUnder(op.item))));
            return;
        }
        const auto changes = op.opType == SceneChanged::PathChanged;
        if (changes || op.subOpType == ObjectDelete::PreDelete) {
            for (const auto& old : Known(paths)) {
                if (old == path || old.starts_with(path + "/")) {
                    paths.erase(old);
                    if (changes) {
                        paths.insert(PathString::string(op.item->path()) + old.substr(path.size()));
                    }
                }
            }
        }
    }
};

struct MemoryEdit : test::MemoryScene
{
    [[nodiscard]] Texts paths() const { return test::pathsOf(test::allUnder(world)); }

    /// Everything that an undo has to bring back.
    [[nodiscard]] Texts snapshot() const { return test::sceneState(world); }

    const test::Services services;
};

} // namespace

TEST_F(MemoryModel, RefusesWhatWouldBreakItAndStaysAsItWas)
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

TEST_F(MemoryModel, IsRegisteredOnlyWhileItsRunTimeLives)
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

TEST(MemoryHistory, IsUndoneToTheStartAndRedoneToTheEndStepByStep)
{
    test::Random random;
    test::ModelledHistory both(random);
    const auto paths = [&] { return asSet(test::pathsOf(test::allUnder(both.world()))); };
    const auto mirror = std::make_shared<Mirror>(paths());
    Scene::instance().addObserver(mirror);
    const auto expectMirrored = [&] { ASSERT_EQ(mirror->paths, paths()); };
    for (auto i = 0; i < 800; ++i) {
        both.step();
        expectMirrored();
    }
    EXPECT_GT(mirror->nbHeard, 200U);
    while (both.undo()) {
        expectMirrored();
    }
    while (both.redo()) {
        expectMirrored();
    }
}

TEST_F(MemoryEdit, PutsThingsWhereTheyBelongAndTellsTheResult)
{
    for (const auto* name : {"a", "b", "c"}) {
        model.make(model.root(), "mesh", name);
    }
    const auto top = Hierarchy::hierarchy(world);
    const auto group = top->createGroupCmd({at("/world/c"), at("/world/b")}, std::string("a"));
    group->execute();
    EXPECT_EQ(group->sceneItem()->path(), at("/world/a1")->path());
    EXPECT_THAT(paths(),
                ElementsAre("/world", "/world/a", "/world/a1", "/world/a1/c", "/world/a1/b"));
    const auto insert =
        Hierarchy::hierarchy(at("/world/a1"))->insertChildCmd(at("/world/a"), at("/world/a1/b"));
    insert->execute();
    EXPECT_EQ(insert->insertedChild()->path(), at("/world/a1/a")->path());
    EXPECT_THAT(paths(),
                ElementsAre("/world", "/world/a1", "/world/a1/c", "/world/a1/a", "/world/a1/b"));
    EXPECT_TRUE(Hierarchy::hierarchy(at("/world/a1"))->ungroup());
    EXPECT_THAT(paths(), ElementsAre("/world", "/world/c", "/world/a", "/world/b"));

    const auto ops = SceneItemOps::sceneItemOps(at("/world/a"));
    EXPECT_EQ(ops->validName(std::string("b")).string(), "b1");
    const auto copy = ops->duplicateItem();
    EXPECT_EQ(copy.item->path(), at("/world/a1")->path());
    const auto renamed = ops->renameItem(std::string("x,/y"));
    EXPECT_EQ(PathString::string(renamed.item->path()), "/world/x__y");
    renamed.undoableCommand->undo();
    EXPECT_TRUE(ops->deleteItem());
    EXPECT_THAT(paths(), ElementsAre("/world", "/world/c", "/world/b", "/world/a1"));
}

TEST_F(MemoryEdit, RefusesWhatTheSceneDoesNotAllow)
{
    model.make(model.make(model.root(), "group", "a")->path(), "mesh", "inner");
    const auto gone = model.make(model.root(), "mesh", "gone");
    model.remove(gone->path());
    const auto top = Hierarchy::hierarchy(world);
    const auto inner = Hierarchy::hierarchy(at("/world/a/inner"));
    const auto before = snapshot();

    EXPECT_FALSE(inner->insertChildCmd(at("/world/a"), nullptr)) << "under itself";
    EXPECT_FALSE(top->insertChildCmd(at("/world"), nullptr));
    EXPECT_FALSE(top->insertChildCmd(at("/world/a"), at("/world/a/inner"))) << "no child of it";
    EXPECT_FALSE(top->createGroupCmd({at("/world/a/inner")}, std::string("g")));
    EXPECT_FALSE(top->createGroupCmd({at("/world/a"), at("/world/a")}, std::string("g")));
    EXPECT_FALSE(top->reorder({}));
    EXPECT_FALSE(inner->ungroup());
    EXPECT_FALSE(Hierarchy::hierarchy(gone)->createChildCmd("mesh", std::string("x")));
    EXPECT_FALSE(SceneItemOps::sceneItemOps(at("/world"))->deleteItem());
    EXPECT_FALSE(SceneItemOps::sceneItemOps(gone)->duplicateItem().item);

    const auto late = SceneItemOps::sceneItemOps(at("/world/a/inner"))->deleteItemCmd();
    late->execute();
    late->undo();
    model.rename(at("/world/a")->path(), "b");
    EXPECT_THROW(late->redo(), std::invalid_argument) << "the item is not there any more";
    model.rename(at("/world/b")->path(), "a");
    EXPECT_EQ(snapshot(), before);
}

TEST_F(MemoryEdit, DuplicatesTheTopmostSelectedItemsOfTheRunTimeAsOneCommand)
{
    const auto a = model.make(model.root(), "group", "a");
    const auto inner = model.make(a->path(), "mesh", "inner");
    const auto b = model.make(model.root(), "mesh", "b");
    const memory::RunTime other("other", "stage");
    Selection selection;
    for (const auto& item : {inner, a, b, other.model().item(other.model().root())}) {
        selection.append(item);
    }
    const auto before = snapshot();
    const auto command = BatchOpsHandler::duplicateSelectionCmd(selection, {});
    ASSERT_TRUE(command);
    EXPECT_EQ(snapshot(), before) << "not executed yet";
    command->execute();
    EXPECT_THAT(paths(), ElementsAre("/world", "/world/a", "/world/b", "/world/a1", "/world/b1",
                                     "/world/a/inner", "/world/a1/inner"));
    const auto& batch = dynamic_cast<const SelectionUndoableCommand&>(*command);
    EXPECT_EQ(batch.targetItem(inner->path())->path(), at("/world/a1/inner")->path());
    EXPECT_EQ(batch.targetItem(b->path())->path(), at("/world/b1")->path());
    EXPECT_FALSE(batch.targetItem(model.root()));
    command->undo();
    EXPECT_EQ(snapshot(), before);
    EXPECT_FALSE(BatchOpsHandler::duplicateSelectionCmd(Selection(), {}));

    /// Reads its options and refuses.
    struct Reader : BatchOpsHandler
    {
        UndoableCommand::Ptr duplicateItemsCmd(Selection const&,
                                               DuplicateOptions const& options) override
        {
            copies.push_back(options.at("copies").get<int>());
            return nullptr;
        }
        std::vector<int> copies;
    };
    const auto reader = std::make_shared<Reader>();
    RunTimeMgr::instance().setBatchOpsHandler(runTime.id(), reader);
    RunTimeMgr::instance().setBatchOpsHandler(other.id(), reader);
    EXPECT_FALSE(BatchOpsHandler::duplicateSelectionCmd(selection, {{"copies", 3}}));
    EXPECT_THAT(reader->copies, ElementsAre(3, 3));
}

TEST_F(MemoryEdit, IsOfferedInTheContextMenu)
{
    const auto menu = ContextOps::contextOps(at("/world"));
    const auto entries = menu->items({});
    ASSERT_EQ(entries.size(), 5U);
    EXPECT_TRUE(entries[0].hasChildren);
    EXPECT_TRUE(entries[1].separator && entries[1].enabled && entries[1].item.empty());
    EXPECT_FALSE(entries[4].enabled) << "the root is not deleted";
    menu->doOp({"make", "camera"});
    EXPECT_EQ(at("/world/camera")->nodeType(), "camera");
    menu->doOp({"make", "nonsense"});
    menu->doOp({"delete"});
    ContextOps::contextOps(at("/world/camera"))->doOp({"delete"});
    EXPECT_THAT(paths(), ElementsAre("/world"));
}

TEST_F(MemoryEdit, FindsGatewaysInTheScene)
{
    const memory::RunTime nested("nested", "stage");
    const auto a = model.make(model.root(), "gateway", "a");
    const auto b = model.make(a->path(), "gateway", "b");
    model.setGateway(a->path(), nested.id());
    model.setGateway(b->path(), 77);
    EXPECT_TRUE(SceneSegmentHandler::isGateway(a->path()));
    EXPECT_FALSE(SceneSegmentHandler::isGateway(model.root()));
    EXPECT_FALSE(SceneSegmentHandler::isGateway(Path()));
    EXPECT_EQ(SceneSegmentHandler::findGatewayItems(model.root()).size(), 2U);
    const auto into = SceneSegmentHandler::findGatewayItems(model.root(), 77);
    ASSERT_EQ(into.size(), 1U);
    EXPECT_EQ(*into.front(), *b);
    EXPECT_EQ(SceneSegmentHandler::findGatewayItems(b->path(), nested.id()).size(), 0U);
}

TEST_F(MemoryEdit, LetsSelectionCommandsBringItemsBackByPath)
{
    const auto selection = GlobalSelection::get();
    const auto a = model.make(model.root(), "mesh", "a");
    const auto b = model.make(model.root(), "mesh", "b");
    const auto selected = [&] { return test::namesOf(*selection); };
    SelectionAppendItem::createAndExecute(selection, a);
    SelectionAppendItem::createAndExecute(selection, b);
    const auto remove = SelectionRemoveItem::createAndExecute(selection, a);
    remove->undo();
    EXPECT_THAT(selected(), ElementsAre("b", "a")) << "at the end, not where it was";
    const auto clear = SelectionClear::createAndExecute(selection);
    EXPECT_THAT(selected(), IsEmpty());
    clear->undo();
    Selection replacement;
    replacement.append(a);
    const auto replace = SelectionReplaceWith::createAndExecute(selection, replacement);
    EXPECT_THAT(selected(), ElementsAre("a"));
    model.remove(b->path());
    EXPECT_THROW(replace->undo(), std::invalid_argument) << "b is gone";
    EXPECT_THAT(selected(), ElementsAre("a")) << "and nothing has changed";
    EXPECT_THROW(SelectionAppendItem::createAndExecute(selection, nullptr), std::invalid_argument);
}
