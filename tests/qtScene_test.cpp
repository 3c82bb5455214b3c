// The schematic view of a scene: where things are in it, and what the mouse does.
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <gmock/gmock.h>
#include <optional>

#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/cameraHandler.h"
#include "kiv/document/workspace.h"
#include "kiv/hierarchy.h"
#include "kiv/host/matrix.h"
#include "kiv/memory/dataModel.h"
#include "kiv/pathString.h"
#include "kiv/qt/sceneView.h"
#include "kiv/transform3d.h"

#include "qtApplication.h"

using namespace Kiv_v4;
using testing::ElementsAre;

namespace {

/// A view of a workspace without a screen.
struct QtScene : test::QtApplication
{
    QtScene()
    {
        view.resize(640, 480);
        view.show();
    }

    SceneItem::Ptr make(const std::string& type, const std::string& name, const Vector3d& at = {})
    {
        const auto item = scene.model().make(scene.root()->path(), type, name);
        if (type == "mesh") {
            scene.model().setBoundingBox(item->path(), {{{-1, -1, -1}}, {{1, 1, 1}}});
        }
        Transform3d::transform3d(item)->translate(at.vector[0], at.vector[1], at.vector[2]);
        return item;
    }

    /// Everything is read and drawn.
    void settle()
    {
        QCoreApplication::processEvents();
        static_cast<void>(view.picture());
    }

    [[nodiscard]] QPoint centreOf(const SceneItem::Ptr& item) const
    {
        const auto world = *host::worldMatrix(Hierarchy::createItem(item->path()));
        const auto& [x, y, z, w] = world.matrix[3];
        return view.placeOf({{x, y, z}}).value_or(QPointF()).toPoint();
    }

    [[nodiscard]] std::vector<std::string> selected() const
    {
        std::vector<std::string> names;
        for (const auto& item : *host.selection) {
            names.push_back(item->nodeName());
        }
        return names;
    }

    void drag(const QPoint& from, const QPoint& by, bool isReleased = true)
    {
        QTest::mousePress(&view, Qt::LeftButton, {}, from);
        for (auto step = 1; step <= 5; ++step) {
            QTest::mouseMove(&view, from + by * step / 5);
            QCoreApplication::processEvents();
        }
        if (isReleased) {
            QTest::mouseRelease(&view, Qt::LeftButton, {}, from + by);
        }
    }

    test::Host host;
    document::Workspace scene;
    qt::SceneView view{host.selection};
};

TEST_F(QtScene, ClicksAndBandsSelectWhatIsThere)
{
    const auto left = make("mesh", "left", {{-4, 0, 0}});
    const auto right = make("mesh", "right", {{4, 0, 0}});
    settle();
    view.frameAll();
    settle();
    QTest::mouseClick(&view, Qt::LeftButton, {}, centreOf(left));
    EXPECT_THAT(selected(), ElementsAre("left"));
    QTest::mouseClick(&view, Qt::LeftButton, Qt::ShiftModifier, centreOf(right));
    EXPECT_THAT(selected(), ElementsAre("left", "right"));
    QTest::mouseClick(&view, Qt::LeftButton, Qt::ControlModifier, centreOf(left));
    EXPECT_THAT(selected(), ElementsAre("right"));
    QTest::mouseClick(&view, Qt::LeftButton, {}, {2, 2});
    EXPECT_THAT(selected(), ElementsAre());
    drag({2, 2}, {630, 470});
    EXPECT_THAT(selected(), ElementsAre("left", "right"));
}

TEST_F(QtScene, ADragMovesWhatIsSelectedAsOneStepAndEscapeTakesItBack)
{
    const auto cube = make("mesh", "cube");
    const auto under = scene.model().make(cube->path(), "mesh", "under");
    settle();
    view.frameAll();
    settle();
    const auto from = centreOf(cube);
    drag(from, {60, 0});
    settle();
    EXPECT_LT(std::abs((centreOf(cube) - from).x() - 60), 2);
    EXPECT_LT(std::abs((centreOf(under) - from).x() - 60), 2) << "goes along";
    EXPECT_THAT(host.history->entries(), ElementsAre("Move cube"));
    EXPECT_EQ(view.itemAt(from + QPoint(60, 0)), cube->path());
    host.history->undo();
    settle();
    EXPECT_EQ(centreOf(cube), from);

    drag(from, {60, 0}, false);
    EXPECT_NE(centreOf(cube), from);
    QTest::keyClick(&view, Qt::Key_Escape);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, from);
    EXPECT_EQ(centreOf(cube), from);
}

TEST_F(QtScene, TheViewFollowsTheScene)
{
    const auto cube = make("mesh", "cube");
    const auto group = make("group", "group");
    settle();
    EXPECT_EQ(view.sceneBox().max.vector[0], 1);
    Transform3d::transform3d(cube)->translate(3, 0, 0);
    settle();
    EXPECT_EQ(view.sceneBox().max.vector[0], 4) << "moved";
    scene.model().move(cube->path(), group->path());
    Transform3d::transform3d(group)->translate(10, 0, 0);
    settle();
    EXPECT_EQ(view.sceneBox().max.vector[0], 14) << "with its parent";
    Object3d::object3d(Hierarchy::createItem(group->path()))->setVisibility(false);
    settle();
    EXPECT_TRUE(view.sceneBox().empty()) << "hidden";
    Object3d::object3d(Hierarchy::createItem(group->path()))->setVisibility(true);
    scene.model().remove(group->path());
    settle();
    EXPECT_TRUE(view.sceneBox().empty());
}

TEST_F(QtScene, TheUnitIsThatOfTheFilesUnlessTheHostSetsIt)
{
    EXPECT_FALSE(view.unit());
    const auto added =
        Attributes::attributes(scene.root())->addAttribute(Attribute::kDouble, "file.sceneUnit");
    std::dynamic_pointer_cast<AttributeDouble>(added)->set(0.01);
    view.refresh();
    settle();
    EXPECT_EQ(view.unit(), 0.01);
    view.setUnit(0.5);
    EXPECT_EQ(view.unit(), 0.5);
    view.setUnit({});
    std::dynamic_pointer_cast<AttributeDouble>(added)->set(-1);
    view.refresh();
    settle();
    EXPECT_FALSE(view.unit()) << "no length";
}

TEST_F(QtScene, LookingThroughACameraFollowsItUntilTheViewIsMoved)
{
    make("mesh", "cube");
    const auto camera = make("camera", "camera", {{0, 0, 10}});
    settle();
    ASSERT_TRUE(view.lookThrough(camera->path()));
    EXPECT_EQ(view.placeOf({}), QPointF(320, 240));
    Transform3d::transform3d(camera)->translate(5, 0, 10);
    settle();
    EXPECT_LT(view.placeOf({})->x(), 320);
    EXPECT_EQ(view.viewpoint().eye(), Vector3d({5, 0, 10}));
    const QSignalSpy changes(&view, &qt::SceneView::cameraChanged);
    QTest::mousePress(&view, Qt::MiddleButton, {}, {100, 100});
    QMouseEvent moved(QEvent::MouseMove, {110, 100}, {110, 100}, Qt::NoButton, Qt::MiddleButton,
                      {});
    QCoreApplication::sendEvent(&view, &moved);
    EXPECT_TRUE(view.camera().empty());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_LT(view.viewpoint().forward().vector[2], -0.9) << "and goes on from there";

    EXPECT_FALSE(view.lookThrough(PathString::path("/world/cube")));
    ASSERT_TRUE(view.lookThrough(camera->path()));
    scene.model().remove(camera->path());
    settle();
    EXPECT_TRUE(view.camera().empty());
}

TEST(QtViewpoint, FramesAreAsWideAsTheFilm)
{
    const qt::Viewpoint orbit({{1, 2, 3}}, 10, 0, 0);
    EXPECT_EQ(orbit.eye(), Vector3d({1, 2, 13}));
    EXPECT_EQ(orbit.frame({640, 480}), QRectF(0, 0, 640, 480));
    const auto framed = orbit.framing({{{-1, -1, -1}}, {{1, 1, 1}}});
    for (const auto x : {-1.0, 1.0}) {
        const auto place = framed.placed(framed.seen({{x, x, x}}), {480, 480});
        ASSERT_TRUE(place);
        EXPECT_TRUE(QRectF(0, 0, 480, 480).contains(*place));
    }
    EXPECT_FALSE(orbit.placed(orbit.seen({{1, 2, 20}}), {640, 480})) << "behind";
}

// Conventions of formats and importers meet here: a camera that looked along another axis, or a
// film of another unit, would miss the scene.

namespace fs = std::filesystem;

/// Files of a format, and as many of their cameras as were made to look elsewhere.
struct Format
{
    const char* folder;
    const char* extension;
    int nbElsewhere;
};

std::vector<fs::path> filesOf(const Format& format)
{
    std::vector<fs::path> files;
    const auto folder = fs::path("/usr/share/assimp/models") / format.folder;
    if (fs::exists(folder)) {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.path().extension() == format.extension) {
                files.push_back(entry.path());
            }
        }
    }
    std::ranges::sort(files);
    return files;
}

/// The middle of the box of what is mounted, in the world; nothing when there are no meshes.
std::optional<Vector3d> middleOf(const Path& gateway)
{
    const auto item = Hierarchy::createItem(gateway);
    const auto top = Hierarchy::hierarchy(item)->children().front();
    const auto object = Object3d::object3d(top);
    const auto box = object ? object->boundingBox() : BoundingBox3d();
    if (box.empty()) {
        return std::nullopt;
    }
    const auto world = *host::worldMatrix(top);
    Vector3d middle;
    for (std::size_t i = 0; i < 3; ++i) {
        middle.vector[i] = world.matrix[3][i];
        for (std::size_t j = 0; j < 3; ++j) {
            middle.vector[i] += (box.min.vector[j] + box.max.vector[j]) / 2 * world.matrix[j][i];
        }
    }
    return middle;
}

struct QtCameras : QtScene, testing::WithParamInterface<Format>
{};

TEST_P(QtCameras, SeeTheMiddleOfTheirScene)
{
    auto nbCameras = 0;
    auto nbSeeing = 0;
    for (const auto& file : filesOf(GetParam())) {
        try {
            const auto gateway = scene.mount(file.string());
            const auto centre = middleOf(gateway);
            for (const auto& camera : CameraHandler::findAll(gateway)) {
                if (!centre || !view.lookThrough(camera->path())) {
                    continue;
                }
                const auto place = view.placeOf(*centre);
                const auto sees = place && view.viewpoint().frame(view.size()).contains(*place);
                ++nbCameras;
                nbSeeing += sees;
                std::cout << (sees ? "sees   " : "misses ") << file.filename().string() << ' '
                          << camera->nodeName() << '\n';
            }
            scene.model().remove(gateway);
        } catch (const std::exception&) { // one of those made to be refused
        }
    }
    std::cout << GetParam().folder << ": " << nbSeeing << " of " << nbCameras << " cameras\n";
    EXPECT_LE(nbCameras - nbSeeing, GetParam().nbElsewhere);
}

INSTANTIATE_TEST_SUITE_P(Formats, QtCameras,
                         testing::Values(Format{"glTF2", ".gltf", 0}, Format{"FBX", ".fbx", 0},
                                         Format{"Collada", ".dae", 4}, Format{"BLEND", ".blend", 2},
                                         Format{"ASE", ".ase", 0}, Format{"LWS", ".lws", 0}),
                         [](const auto& format) { return std::string(format.param.folder); });

} // namespace
