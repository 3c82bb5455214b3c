// The window, driven by mouse and keys.
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <gmock/gmock.h>

#include "kiv/document/sceneDocument.h"
#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/transform3d.h"

#include "errorBar.h"
#include "mainWindow.h"
#include "qtApplication.h"
#include "screenshot.h"
#include "stage.h"
#include "windowProgram.h"

using namespace Kiv_v4;
using testing::ElementsAre;

namespace {

/// The window over a new scene, with nothing kept of it.
struct QtWindow : test::QtApplication
{
    QtWindow()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        main.resize(1200, 800);
        main.show();
    }

    void make(const std::string& type, const std::string& name)
    {
        stage.workspace.model().make(stage.workspace.root()->path(), type, name);
    }

    /// A scene with three meshes, saved as it is.
    void makeMeshes()
    {
        for (const auto* name : {"a", "b", "c"}) {
            make("mesh", name);
        }
        main.outliner().expandAll();
        settle();
    }

    /// Also makes the window the active one, as it was before a question was asked.
    void settle()
    {
        main.activateWindow();
        QCoreApplication::processEvents();
    }

    [[nodiscard]] static Path world(const std::string& name)
    {
        return PathString::path("/world/" + name);
    }

    [[nodiscard]] QModelIndex row(const std::string& name) const
    {
        return dynamic_cast<qt::OutlinerModel&>(*main.outliner().model()).indexOf(world(name));
    }

    [[nodiscard]] QPoint middleOf(const std::string& name) const
    {
        return main.outliner().visualRect(row(name)).center();
    }

    void click(const std::string& name, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(main.outliner().viewport(), Qt::LeftButton, modifiers, middleOf(name));
    }

    [[nodiscard]] std::vector<std::string> children() const
    {
        std::vector<std::string> names;
        for (const auto& child : Hierarchy::hierarchy(stage.workspace.root())->children()) {
            names.push_back(child->nodeName());
        }
        return names;
    }

    [[nodiscard]] std::vector<std::string> selected() const
    {
        std::vector<std::string> names;
        for (const auto& item : *stage.selection) {
            names.push_back(item->nodeName());
        }
        return names;
    }

    /// Answers the question that is asked next.
    static void answer(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, [button] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                box->button(button)->click();
            }
        });
    }

    QTemporaryDir folder;
    window::Stage stage;
    window::MainWindow main{stage, false};
};

TEST_F(QtWindow, NamesAreEditedInPlaceAndUndoneByKeys)
{
    makeMeshes();
    click("b");
    QTest::keyClick(&main.outliner(), Qt::Key_F2);
    auto* editor = main.outliner().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "box");
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    EXPECT_THAT(children(), ElementsAre("a", "box", "c"));
    EXPECT_THAT(selected(), ElementsAre("box"));
    EXPECT_TRUE(main.isWindowModified());
    QTest::keyClick(&main, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(children(), ElementsAre("a", "b", "c"));
    EXPECT_FALSE(main.isWindowModified());
}

TEST_F(QtWindow, ClicksSelectInOrderAndDeleteDeletes)
{
    makeMeshes();
    click("c");
    click("a", Qt::ControlModifier);
    EXPECT_THAT(selected(), ElementsAre("c", "a"));
    QTest::keyClick(&main, Qt::Key_Delete);
    EXPECT_THAT(children(), ElementsAre("b"));
    QTest::keyClick(&main, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(children(), ElementsAre("a", "b", "c"));
    EXPECT_THAT(selected(), ElementsAre("c", "a")) << "they come back selected";
}

TEST_F(QtWindow, RowsAreDraggedAndDropped)
{
    makeMeshes();
    auto& outliner = main.outliner();
    const std::unique_ptr<QMimeData> data(outliner.model()->mimeData({row("c")}));
    const auto where = outliner.visualRect(row("a")).center();
    QDragEnterEvent enter(where, Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(outliner.viewport(), &enter);
    QDragMoveEvent move(where, Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(outliner.viewport(), &move);
    EXPECT_TRUE(move.isAccepted());
    QDropEvent drop(where, Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(outliner.viewport(), &drop);
    EXPECT_THAT(children(), ElementsAre("a", "b"));
    EXPECT_TRUE(row("a/c").isValid());
    stage.history->undo();
    EXPECT_THAT(children(), ElementsAre("a", "b", "c"));
}

TEST_F(QtWindow, ValuesOfAllSelectedItemsAreEdited)
{
    makeMeshes();
    click("a");
    click("b", Qt::ShiftModifier);
    settle();
    auto& attributes = main.attributes();
    const auto found =
        attributes.model()->match(attributes.model()->index(0, 0), Qt::DisplayRole, "translation",
                                  1, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1);
    const auto value = found.front().siblingAtColumn(qt::AttributeModel::ValueColumn);
    attributes.setCurrentIndex(value);
    attributes.edit(value);
    const auto fields = attributes.viewport()->findChildren<QLineEdit*>();
    ASSERT_EQ(fields.size(), 3);
    fields[0]->setText("4");
    QTest::keyClick(fields[0], Qt::Key_Return);
    settle();
    for (const auto* name : {"a", "b"}) {
        const auto item = stage.workspace.model().item(world(name));
        EXPECT_EQ(Transform3d::transform3d(item)->translation(), Vector3d({4, 0, 0}));
    }
    EXPECT_EQ(stage.history->entries().size(), 1U);
}

TEST_F(QtWindow, CamerasAreLookedThroughByTheirPaths)
{
    make("camera", "shot");
    EXPECT_TRUE(main.lookThrough("/world/shot"));
    EXPECT_EQ(main.view().camera(), world("shot"));
    EXPECT_THAT(selected(), ElementsAre("shot"));
    EXPECT_FALSE(main.lookThrough("/world/none"));
}

TEST_F(QtWindow, ClosingAsksAboutWhatIsNotSaved)
{
    const auto file = folder.filePath("scene.json");
    EXPECT_TRUE(main.close()) << "there is nothing to lose";
    main.show();
    makeMeshes();
    click("a");
    QTest::keyClick(&main, Qt::Key_Delete);
    answer(QMessageBox::Cancel);
    EXPECT_FALSE(main.close());
    EXPECT_TRUE(main.isVisible());
    answer(QMessageBox::Discard);
    EXPECT_TRUE(main.close());
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(QtWindow, ScenesAreSavedAndOpened)
{
    makeMeshes();
    const auto file = folder.filePath("scene.json");
    document::save(stage.workspace, file.toStdString());
    click("a");
    QTest::keyClick(&main, Qt::Key_Delete);
    answer(QMessageBox::Discard);
    EXPECT_TRUE(main.load(file));
    EXPECT_THAT(children(), ElementsAre("a", "b", "c"));
    EXPECT_EQ(main.windowTitle(), "scene.json[*] - kiv");
    EXPECT_FALSE(main.isWindowModified());
    settle();
    click("a");
    QTest::keyClick(&main, Qt::Key_Delete);
    EXPECT_TRUE(main.save());
    EXPECT_FALSE(main.isWindowModified());
    EXPECT_TRUE(main.load(file));
    EXPECT_THAT(children(), ElementsAre("b", "c"));
}

TEST_F(QtWindow, ErrorsAreShownInABar)
{
    makeMeshes();
    EXPECT_FALSE(main.load(folder.filePath("missing.gltf")));
    EXPECT_TRUE(main.errorBar().text().contains("missing.gltf"));
    const std::unique_ptr<QMimeData> late(main.outliner().model()->mimeData({row("b")}));
    stage.workspace.model().remove(world("b"));
    main.outliner().model()->dropMimeData(late.get(), Qt::MoveAction, -1, 0, row("a"));
    EXPECT_TRUE(main.errorBar().text().contains("no such item '/world/b'"));
}

/// What the program says without a window, with its status.
std::string said(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    for (auto& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const auto status = window::runProgram(static_cast<int>(words.size()), arguments.data());
    return std::to_string(status) + " " + testing::internal::GetCapturedStdout() +
           testing::internal::GetCapturedStderr();
}

TEST(QtWindowProgram, ReadsItsOptionsBeforeItNeedsAScreen)
{
    const auto wrong = [](const std::string& trouble) {
        return "2 kiv: " + trouble + " (kiv window --help tells more)\n";
    };
    EXPECT_EQ(said({"", "--sise", "1x2"}),
              wrong("unknown option '--sise'; did you mean '--size'?"));
    EXPECT_EQ(said({"", "--size", "640"}), wrong("--size: not a size: '640'"));
    EXPECT_EQ(said({"", "--screenshot"}), wrong("--screenshot wants a value"));
    EXPECT_THAT(said({"", "--help"}), testing::StartsWith("0 Usage: kiv window [OPTIONS]"));
    EXPECT_THAT(said({"", "--version"}), testing::StartsWith("0 kiv-window 4."));
}

TEST_F(QtWindow, PicturesAreWrittenWithoutAScreen)
{
    makeMeshes();
    const auto file = folder.filePath("picture.png");
    window::saveScreenshot(main, file, {900, 600});
    EXPECT_EQ(QImage(file).size(), QSize(900, 600));
    EXPECT_THROW(window::saveScreenshot(main, folder.filePath("none/picture.png"), {9, 9}),
                 std::runtime_error);
}

} // namespace
