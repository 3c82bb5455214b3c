#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <utility>

#include "kiv/attributes.h"
#include "kiv/batchOpsHandler.h"
#include "kiv/compositeUndoableCommand.h"
#include "kiv/contextOps.h"
#include "kiv/globalSelection.h"
#include "kiv/hierarchy_v4_2.h"
#include "kiv/host/undoHistory.h"
#include "kiv/nodeDef.h"
#include "kiv/pathString.h"
#include "kiv/sceneItemOps.h"
#include "kiv/sceneNotification.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selectionCommands.h"
#include "kiv/transform3d.h"
#include "kiv/undoableCommandGuard.h"
#include "kiv/uniqueName.h"

#include "callback.h"
#include "items.h"
#include "memoryScene.h"
#include "modelledHistory.h"
#include "random.h"
#include "stubs.h"

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
    std::size_t nbReceived = 0;

private:
    void apply(const SceneCompositeNotification::Op& op)
    {
        ++nbReceived;
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
    EXPECT_GT(mirror->nbReceived, 200U);
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
        UndoableCommand::Ptr duplicateItemsCmd(const Selection&,
                                               const DuplicateOptions& options) override
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

    const std::vector<UndoableCommand::Ptr> withoutSelection = {
        std::make_shared<SelectionAppendItem>(nullptr, a),
        std::make_shared<SelectionRemoveItem>(nullptr, a),
        std::make_shared<SelectionClear>(nullptr),
        std::make_shared<SelectionReplaceWith>(nullptr, replacement)};
    for (const auto& command : withoutSelection) {
        for (const auto run : {&UndoableCommand::redo, &UndoableCommand::undo}) {
            test::expectError<std::invalid_argument>([&] { ((*command).*run)(); },
                                                     "Cannot change a null selection.");
        }
    }
}

TEST_F(MemoryEdit, LetsObserversInterveneWhenAnItemIsAboutToGo)
{
    const auto parent = model.make(model.root(), "group", "parent")->path();
    const auto elsewhere = model.make(model.root(), "group", "elsewhere")->path();
    const struct
    {
        const char* name;
        std::function<void(const Path&)> intervene;
        std::string lastPath; ///< What the post-delete tells; empty for none of its own.
    } cases[] = {
        {"remove", [&](const Path& item) { model.remove(item); }, "/world/parent/item"},
        {"removeParent", [&](const Path&) { model.remove(parent); }, "/world/parent"},
        {"rename", [&](const Path& item) { model.rename(item, "new"); }, "/world/parent/new"},
        {"move", [&](const Path& item) { model.move(item, elsewhere); }, "/world/elsewhere/item"},
    };
    for (const auto& [name, intervene, lastPath] : cases) {
        SCOPED_TRACE(name);
        const auto item = model.make(parent, "mesh", "item");
        auto intervened = false;
        Texts gone;
        const auto observer = test::Callback::make([&, intervene = intervene](const auto& change) {
            if (const auto* told = dynamic_cast<const ObjectPostDelete*>(&change)) {
                gone.push_back(PathString::string(told->changedPath()));
            } else if (dynamic_cast<const ObjectPreDelete*>(&change) &&
                       !std::exchange(intervened, true)) {
                intervene(item->path());
            }
        });
        Scene::instance().addObserver(observer);
        const auto command = SceneItemOps::sceneItemOps(item)->deleteItemCmd();
        command->execute();
        EXPECT_THAT(gone, ElementsAre(lastPath));
        EXPECT_FALSE(model.item(item->path()));
        Scene::instance().removeObserver(observer);
        command->undo();
        const auto taken = std::string(name).starts_with("remove");
        EXPECT_EQ(at(lastPath) != nullptr, !taken);
        if (!model.item(parent)) {
            model.make(model.root(), "group", "parent");
        }
    }
}

TEST_F(MemoryEdit, RefusesToBringBackWhatAnotherEditTook)
{
    const auto create = Hierarchy::hierarchy(world)->createChildCmd("mesh", std::string("made"));
    create->execute();
    model.remove(create->sceneItem()->path());
    EXPECT_THROW(create->undo(), std::invalid_argument);
    EXPECT_THROW(create->redo(), std::invalid_argument);

    const auto item = model.make(model.root(), "mesh", "deleted");
    const auto remove = SceneItemOps::sceneItemOps(item)->deleteItemCmd();
    remove->execute();
    remove->undo();
    model.remove(item->path());
    EXPECT_THROW(remove->redo(), std::invalid_argument);
    EXPECT_THROW(remove->undo(), std::invalid_argument);
    EXPECT_THAT(paths(), ElementsAre("/world"));
}

TEST_F(MemoryEdit, DuplicatesAllThatIsSelectedBesideAnotherSceneOfThatName)
{
    const memory::RunTime other("other", "world");
    other.model().make(other.model().root(), "mesh", "a");
    const auto a = model.make(model.root(), "group", "a");
    const auto inner = model.make(a->path(), "mesh", "inner");
    Selection everything;
    for (const auto& item : {world, a, inner, other.model().item(other.model().root())}) {
        everything.append(item);
    }
    const auto command = BatchOpsHandler::duplicateSelectionCmd(everything, {});
    ASSERT_TRUE(command);
    command->execute();
    EXPECT_THAT(paths(), ElementsAre("/world", "/world/a", "/world/a1", "/world/a/inner",
                                     "/world/a1/inner"));
}

TEST(MemoryRunTime, LeavesNothingToEditWhenItEnds)
{
    Hierarchy::Ptr hierarchy;
    Hierarchy::Ptr nested;
    Attributes::Ptr attributes;
    Attribute::Ptr attribute;
    Transform3d::Ptr transform;
    UndoableCommand::Ptr command;
    {
        memory::RunTime runTime;
        auto& model = runTime.model();
        const auto a = model.make(model.root(), "group", "a");
        hierarchy = Hierarchy::hierarchy(model.item(model.root()));
        nested = Hierarchy::hierarchy(a);
        transform = Transform3d::transform3d(a);
        attributes = Attributes::attributes(a);
        command = attributes->addAttributeCmd(Attribute::kInt, "size");
        command->execute();
        attribute = attributes->attribute("size");
    }
    EXPECT_THAT(hierarchy->children(), IsEmpty());
    EXPECT_FALSE(hierarchy->createChildCmd("mesh", std::string("x")));
    EXPECT_FALSE(nested->parent());
    EXPECT_FALSE(attributes->hasAttribute("size"));
    EXPECT_FALSE(attribute->hasValue());
    EXPECT_FALSE(transform->translateCmd(1, 2, 3));
    EXPECT_THROW(command->undo(), std::invalid_argument);
}

TEST_F(MemoryModel, TellsWhereAnItemIsThatAnObserverChanged)
{
    auto renamed = 0;
    const auto rename = test::Callback::make([&](const auto& change) {
        if (const auto* told = dynamic_cast<const ObjectAdd*>(&change)) {
            model.rename(told->item()->path(), "renamed" + std::to_string(++renamed));
        }
    });
    Scene::instance().addObserver(rename);
    const auto made = model.make(model.root(), "mesh", "item");
    EXPECT_EQ(made->nodeName(), "renamed1");
    EXPECT_EQ(model.item(made->path())->path(), made->path());
    const auto command =
        Hierarchy::hierarchy(world)->createChildCmd("mesh", std::string("commanded"));
    command->execute();
    EXPECT_EQ(command->sceneItem()->nodeName(), "renamed2");
    Scene::instance().removeObserver(rename);

    const auto remove = test::Callback::make([&](const auto& change) {
        if (const auto* told = dynamic_cast<const ObjectRename*>(&change)) {
            model.remove(told->item()->path());
        }
    });
    Scene::instance().addObserver(remove);
    EXPECT_FALSE(model.rename(made->path(), "gone"));
    const auto result =
        SceneItemOps::sceneItemOps(command->sceneItem())->renameItem(std::string("gone"));
    EXPECT_FALSE(result.item || result.undoableCommand);
    Scene::instance().removeObserver(remove);
}

TEST_F(MemoryEdit, IsDroppedFromAHistoryWithItsRunTime)
{
    const memory::RunTime other("other", "stage");
    const auto stage = other.model().item(other.model().root());
    test::execute(Hierarchy::hierarchy(world)->createChildCmd("mesh", std::string("stays")));
    test::execute(Hierarchy::hierarchy(stage)->createChildCmd("mesh", std::string("goes")));
    test::execute(NodeDef::definition(other.id(), "mesh")->createNodeCmd(stage, {}));
    const auto goes = Hierarchy::hierarchy(stage)->children().front();
    test::execute(Attributes::attributes(goes)->addAttributeCmd(Attribute::kInt, "size"));
    const auto size =
        std::dynamic_pointer_cast<AttributeInt>(Attributes::attributes(goes)->attribute("size"));
    {
        const host::UndoHistory::Merging drag(*services.history);
        for (auto i = 0; i < 5; ++i) {
            test::execute(size->setCmd(i));
        }
    }
    EXPECT_THAT(services.history->entries(), testing::SizeIs(5)) << "the drag is one";
    services.history->dropRunTime(other.id());
    EXPECT_THAT(services.history->entries(), ElementsAre("Make mesh stays"));
}

TEST_F(MemoryEdit, TakesNamesThatTheEditItselfFrees)
{
    const auto lamp = model.make(model.root(), "mesh", "lamp");
    const auto before = snapshot();
    const auto group = Hierarchy::hierarchy(world)->createGroupCmd({lamp}, std::string("lamp"));
    group->execute();
    EXPECT_THAT(paths(), ElementsAre("/world", "/world/lamp", "/world/lamp/lamp"));
    EXPECT_EQ(group->sceneItem()->path(), lamp->path());
    const auto grouped = snapshot();
    const auto ungroup = Hierarchy::hierarchy(group->sceneItem())->ungroupCmd();
    ungroup->execute();
    EXPECT_EQ(snapshot(), before);
    ungroup->undo();
    EXPECT_EQ(snapshot(), grouped);
    group->undo();
    EXPECT_EQ(snapshot(), before);

    auto nbTold = 0;
    const auto observer = test::Callback::make([&](const auto&) { ++nbTold; });
    Scene::instance().addObserver(observer);
    const auto renamed = SceneItemOps::sceneItemOps(lamp)->renameItem(std::string("lamp"));
    EXPECT_EQ(renamed.item->path(), lamp->path());
    renamed.undoableCommand->undo();
    EXPECT_EQ(nbTold, 0);
}

TEST_F(MemoryEdit, MakesManyChildrenInOneNotification)
{
    model.make(model.root(), "mesh", "a");
    auto nbTold = 0;
    const auto observer = test::Callback::make([&](const auto&) { ++nbTold; });
    Scene::instance().addObserver(observer);
    const auto before = snapshot();
    const auto command = Hierarchy_v4_2::hierarchy(world)->createChildrenCmd(
        "mesh", {std::string("a"), std::string("b"), std::string("a")});
    command->execute();
    EXPECT_THAT(paths(), ElementsAre("/world", "/world/a", "/world/a1", "/world/b", "/world/a2"));
    command->undo();
    EXPECT_EQ(snapshot(), before);
    EXPECT_THROW(model.makeAll(model.root(), "mesh", {"x", "y", "x"}), std::invalid_argument);
    EXPECT_EQ(snapshot(), before);
    EXPECT_EQ(test::namesOf(model.makeAll(model.root(), "mesh", {"x", "y"})), (Texts{"x", "y"}));
    EXPECT_EQ(nbTold, 3);
}

TEST_F(MemoryModel, FindsFreeNamesAsCountingDoes)
{
    test::Random random;
    const auto parent = model.make(model.root(), "group", "parent")->path();
    const Texts stems{"", "a", "a0", "a01", "a9", "a1b", "a99999999999999999"};
    Texts taken;
    for (auto i = 0; i < 1000; ++i) {
        if (random.below(3) == 0 && !taken.empty()) {
            std::swap(random.of(taken), taken.back());
            model.remove(parent + taken.back());
            taken.pop_back();
            continue;
        }
        const auto number = random.below(2) ? std::to_string(random.below(12)) : "";
        const auto wanted = random.of(stems) + number;
        const auto expected = uniqueName(wanted.empty() ? "_" : wanted, [&](const auto& name) {
            return std::find(taken.begin(), taken.end(), name) != taken.end();
        });
        ASSERT_EQ(model.uniqueName(parent, wanted), expected);
        taken.push_back(model.make(parent, "mesh", expected)->nodeName());
    }
}

TEST_F(MemoryModel, FindsFreeNamesThatAreLongerThanTheTakenOnes)
{
    const std::string ones(17, '9');
    for (const auto* more : {"", "9", "99"}) {
        const auto wanted = "b" + ones + more;
        const auto first = model.make(model.root(), "mesh", wanted)->path();
        const auto next = model.uniqueName(model.root(), wanted);
        const auto second = model.make(model.root(), "mesh", next)->path();
        EXPECT_NE(model.uniqueName(model.root(), wanted), next);
        model.remove(second);
        EXPECT_EQ(model.uniqueName(model.root(), wanted), next);
        model.remove(first);
    }
}
