// The item models under Qt's own tester while the scene is edited at random, and what users do with
// them.
#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QSignalSpy>
#include <QTreeView>
#include <gmock/gmock.h>
#include <optional>

#include "kiv/hierarchy.h"
#include "kiv/memory/runTime.h"
#include "kiv/object3d.h"
#include "kiv/pathString.h"
#include "kiv/qt/outlinerModel.h"
#include "kiv/qt/selectionSync.h"
#include "kiv/qt/undoActions.h"

#include "qtApplication.h"
#include "structureEditor.h"
#include "treeModel.h"

using namespace Kiv_v4;
using testing::ElementsAre;
using Tester = QAbstractItemModelTester;

namespace {

constexpr auto kFatal = Tester::FailureReportingMode::Fatal;

/// Opens as a user does: everything, and all the way down.
void fetchAll(QAbstractItemModel& model)
{
    for (std::vector<QPersistentModelIndex> open{QModelIndex()}; !open.empty();) {
        const QModelIndex index = open.back();
        open.pop_back();
        while (model.canFetchMore(index)) {
            model.fetchMore(index);
        }
        for (auto row = 0; row < model.rowCount(index); ++row) {
            open.emplace_back(model.index(row, 0, index));
        }
    }
}

std::vector<std::string> names(const Selection& selection)
{
    std::vector<std::string> all;
    for (const auto& item : selection) {
        all.push_back(item->nodeName());
    }
    return all;
}

std::vector<std::string> children(const SceneItem::Ptr& item)
{
    std::vector<std::string> all;
    for (const auto& child : Hierarchy::hierarchy(item)->children()) {
        all.push_back(child->nodeName());
    }
    return all;
}

std::shared_ptr<host::HostScene> installedScene()
{
    auto scene = std::make_shared<host::HostScene>();
    Scene::initializeInstance(scene);
    return scene;
}

std::shared_ptr<ObservableSelection> followingSelection(host::HostScene& scene)
{
    auto selection = std::make_shared<ObservableSelection>();
    scene.follow(selection, host::HostScene::Gone::ComesBack);
    return selection;
}

/// An outliner over a scene that is edited at random.
struct EditedOutliner
{
    EditedOutliner() { view.setModel(&model); }
    EditedOutliner(const EditedOutliner&) = delete;
    EditedOutliner& operator=(const EditedOutliner&) = delete;
    ~EditedOutliner() { Scene::initializeInstance(nullptr); }

    void compareRows()
    {
        for (const auto& item : editor->items()) {
            const auto index = model.indexOf(item->path());
            ASSERT_TRUE(index.isValid());
            auto row = 0;
            for (const auto& child : Hierarchy::hierarchy(item)->children()) {
                ASSERT_EQ(model.path(model.index(row++, 0, index)), child->path());
            }
            ASSERT_EQ(model.rowCount(index), row);
        }
    }

    void compareSelection()
    {
        QCoreApplication::processEvents();
        for (const auto& index : view.selectionModel()->selectedRows()) {
            ASSERT_TRUE(selection->contains(model.path(index)))
                << PathString::string(model.path(index));
        }
        for (const auto& item : *selection) {
            const auto index = model.indexOf(item->path());
            ASSERT_TRUE(!index.isValid() || view.selectionModel()->isSelected(index));
        }
    }

    /// As a user, or as somebody else.
    void selectSomething()
    {
        const auto items = editor->items();
        const auto& item = random.of(items);
        const auto index = model.indexOf(item->path());
        const auto add = random.below(2) == 0 ? QItemSelectionModel::Toggle
                                              : QItemSelectionModel::ClearAndSelect;
        switch (random.below(4)) {
        case 0:
            selection->append(item);
            break;
        case 1:
            selection->remove(item);
            break;
        default:
            view.selectionModel()->select(index, add | QItemSelectionModel::Rows);
        }
    }

    const std::shared_ptr<host::HostScene> scene = installedScene();
    const std::shared_ptr<ObservableSelection> selection = followingSelection(*scene);
    test::Random random;
    std::optional<test::StructureEditor> editor{std::in_place, random};
    qt::OutlinerModel model;
    QTreeView view;
};

using QtOutliner = test::QtApplication;

struct QtModels : test::QtApplication
{
    [[nodiscard]] QModelIndex at(const std::string& path)
    {
        return model.reveal(PathString::path(path));
    }

    SceneItem::Ptr make(const std::string& path)
    {
        const auto whole = PathString::path(path);
        return scene.make(whole.pop(), "mesh", whole.back().string());
    }

    std::vector<std::string> childrenOf(const std::string& path)
    {
        return children(scene.item(PathString::path(path)));
    }

    bool drop(const std::vector<std::string>& paths, const std::string& parent, int row)
    {
        QModelIndexList indexes;
        for (const auto& path : paths) {
            indexes.append(at(path));
        }
        const std::unique_ptr<QMimeData> data(model.mimeData(indexes));
        return model.dropMimeData(data.get(), Qt::MoveAction, row, 0, at(parent));
    }

    test::Host host;
    std::optional<memory::RunTime> runTime{std::in_place};
    memory::DataModel& scene = runTime->model();
    qt::OutlinerModel model;
};

TEST_F(QtModels, OfManySiblingsRowsAreReadAsTheyAreShown)
{
    std::vector<std::string> siblings;
    for (auto i = 0; i < 2500; ++i) {
        siblings.push_back("s" + std::to_string(i));
    }
    scene.makeAll(scene.root(), "mesh", siblings);
    const auto world = at("/world");
    EXPECT_TRUE(model.hasChildren(world));
    EXPECT_EQ(model.rowCount(world), 0);
    model.fetchMore(world);
    EXPECT_EQ(model.rowCount(world), 1000);
    const Tester tester(&model, kFatal);
    fetchAll(model);
    EXPECT_EQ(model.rowCount(world), 2500);
}

TEST_F(QtModels, RowsShowWhatTheItemIsAndAreEditedByCommands)
{
    make("/world/cube");
    const auto cube = at("/world/cube");
    EXPECT_EQ(cube.data(), "cube");
    EXPECT_EQ(cube.siblingAtColumn(qt::OutlinerModel::TypeColumn).data(), "mesh");
    EXPECT_EQ(cube.siblingAtColumn(qt::OutlinerModel::RunTimeColumn).data(), "In memory");
    EXPECT_FALSE(cube.data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_FALSE(cube.data(Qt::ToolTipRole).toString().isEmpty());

    const auto shown = cube.siblingAtColumn(qt::OutlinerModel::VisibilityColumn);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    EXPECT_EQ(shown.data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_TRUE(model.setData(shown, Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(shown.data(Qt::CheckStateRole), Qt::Unchecked);
    EXPECT_EQ(changes.count(), 1);

    const QPersistentModelIndex kept(cube);
    EXPECT_TRUE(model.setData(cube, "box", Qt::EditRole));
    EXPECT_EQ(kept.data(), "box");
    EXPECT_FALSE(model.setData(kept, "box", Qt::EditRole)) << "nothing to do";
    host.history->undo();
    host.history->undo();
    EXPECT_EQ(kept.data(), "cube");
    EXPECT_EQ(at("/world/cube"), kept);
    EXPECT_FALSE(host.history->canUndo());
}

TEST_F(QtModels, DropsMoveItemsInTheOrderOfTheirRowsAsOneStep)
{
    for (const auto* name : {"a", "b", "c", "d"}) {
        make("/world/" + std::string(name));
    }
    make("/world/a/x");
    fetchAll(model);
    const Tester tester(&model, kFatal);

    EXPECT_TRUE(drop({"/world/d", "/world/b"}, "/world", 0));
    EXPECT_THAT(childrenOf("/world"), ElementsAre("b", "d", "a", "c"));
    EXPECT_TRUE(drop({"/world/b"}, "/world", 1)) << "before itself: stays";
    EXPECT_THAT(childrenOf("/world"), ElementsAre("b", "d", "a", "c"));
    EXPECT_TRUE(drop({"/world/a", "/world/a/x"}, "/world/c", -1)) << "what goes along is left out";
    EXPECT_THAT(childrenOf("/world"), ElementsAre("b", "d", "c"));
    EXPECT_THAT(childrenOf("/world/c/a"), ElementsAre("x"));
    EXPECT_FALSE(drop({"/world/c"}, "/world/c/a", -1)) << "into itself";
    host.history->undo();
    host.history->undo();
    host.history->undo();
    EXPECT_THAT(childrenOf("/world"), ElementsAre("a", "b", "c", "d"));

    const std::unique_ptr<QMimeData> late(model.mimeData({at("/world/a"), at("/world/b")}));
    scene.remove(PathString::path("/world/b"));
    EXPECT_FALSE(model.dropMimeData(late.get(), Qt::MoveAction, -1, 0, at("/world/c")));
    EXPECT_THAT(childrenOf("/world"), ElementsAre("a", "c", "d")) << "all or nothing";
}

TEST_F(QtModels, TheSelectionIsOneInTheOrderOfSelecting)
{
    for (const auto* name : {"a", "b", "c"}) {
        make("/world/" + std::string(name));
    }
    host.selection->append(scene.item(PathString::path("/world/b")));
    QTreeView view;
    view.setModel(&model);
    auto& selected = *view.selectionModel();
    const qt::SelectionSync sync(model, selected);
    EXPECT_FALSE(selected.hasSelection()) << "nobody has opened the parent";
    const auto c = at("/world/c");
    EXPECT_EQ(selected.selectedRows().size(), 1) << "rows come selected";

    selected.select(c, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selected.select(at("/world/a"), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_THAT(names(*host.selection), ElementsAre("b", "c", "a"));
    host.selection->remove(model.item(c));
    EXPECT_FALSE(selected.isSelected(c));

    scene.rename(PathString::path("/world/b"), "bb");
    EXPECT_THAT(names(*host.selection), ElementsAre("bb", "a"));
    EXPECT_TRUE(selected.isSelected(at("/world/bb")));
    drop({"/world/a"}, "/world/c", -1);
    EXPECT_THAT(names(*host.selection), ElementsAre("bb", "a"));
    EXPECT_TRUE(selected.isSelected(at("/world/c/a")));

    selected.select(at("/world/c"),
                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    EXPECT_THAT(names(*host.selection), ElementsAre("c"));
    scene.remove(PathString::path("/world/c"));
    EXPECT_TRUE(host.selection->empty());
}

TEST_F(QtModels, UndoActionsSayWhatTheyAreAbout)
{
    make("/world/cube");
    const qt::UndoActions actions(host.history);
    qt::HistoryModel entries(host.history);
    const Tester tester(&entries, kFatal);
    EXPECT_FALSE(actions.undo().isEnabled());
    model.setData(at("/world/cube"), "box", Qt::EditRole);
    model.setData(at("/world/box"), "ball", Qt::EditRole);
    EXPECT_EQ(actions.undo().text(), "Undo Rename box");
    actions.undo().trigger();
    EXPECT_EQ(actions.redo().text(), "Redo Rename box");
    EXPECT_EQ(entries.current().row(), 1);
    entries.goTo(entries.index(0));
    EXPECT_THAT(childrenOf("/world"), ElementsAre("cube"));
    entries.goTo(entries.index(2));
    EXPECT_THAT(childrenOf("/world"), ElementsAre("ball"));
}

TEST_F(QtModels, RunTimesLeaveUnderTheOutliner)
{
    make("/world/cube");
    fetchAll(model);
    const Tester tester(&model, kFatal);
    QTreeView view;
    view.setModel(&model);
    const qt::SelectionSync sync(model, *view.selectionModel());
    view.selectAll();
    host.selection->clear();
    runTime.reset();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(QtOutliner, ModelsFollowRandomEditsWithMountsBatchesAndUndo)
{
    EditedOutliner outliner;
    qt::HistoryModel history(outliner.editor->history);
    const qt::SelectionSync sync(outliner.model, *outliner.view.selectionModel(),
                                 outliner.selection);
    fetchAll(outliner.model);
    const Tester rows(&outliner.model, kFatal);
    const Tester entries(&history, kFatal);
    for (auto step = 0; step < 1500; ++step) {
        outliner.editor->step();
        outliner.selectSomething();
        if (step % 20 == 0) {
            fetchAll(outliner.model);
            outliner.compareRows();
        }
        outliner.compareSelection();
        ASSERT_FALSE(HasFatalFailure()) << "step " << step;
    }
    outliner.selection->clear();
    outliner.editor->history->clear();
    outliner.editor.reset();
    EXPECT_EQ(outliner.model.rowCount(), 0);
}

} // namespace

TEST_F(QtOutliner, TheExampleOfAModelFollowsRandomEditsAmongManySiblings)
{
    for (const auto& [nbSiblings, nbSteps] : {std::pair(0, 2000), std::pair(100000, 10)}) {
        const auto scene = installedScene();
        {
            test::Random random;
            test::StructureEditor editor(random);
            for (auto count = nbSiblings; count > 0; --count) {
                editor.model.make(editor.model.root(), "mesh", "sibling" + std::to_string(count));
            }
            TreeModel model;
            fetchAll(model);
            const Tester tester(&model, kFatal);
            for (auto step = 0; step < nbSteps; ++step) {
                editor.step();
            }
            fetchAll(model);
            for (const auto& item : editor.items()) {
                const auto* node = model.tree().find(item->path());
                ASSERT_TRUE(node);
                std::size_t row = 0;
                for (const auto& child : Hierarchy::hierarchy(item)->children()) {
                    ASSERT_LT(row, node->nbRows());
                    ASSERT_EQ(node->child(row++).path(), child->path());
                }
                ASSERT_EQ(row, node->nbRows());
            }
        }
        Scene::initializeInstance(nullptr);
    }
}
