#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kiv/camera.h"
#include "kiv/cameraHandler.h"
#include "kiv/cameraNotification.h"
#include "kiv/light.h"
#include "kiv/lightNotification.h"
#include "kiv/pathString.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/setValueCommands.h"

#include "callback.h"
#include "items.h"
#include "memoryScene.h"
#include "nested.h"

using namespace Kiv_v4;
using test::Callback;
using test::pathsOf;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A float property of an interface, with the value that new items of kiv_memory have.
template <class Interface>
struct FloatProperty
{
    const char* name;
    float initial;
    UndoableCommand::Ptr (Interface::*makeCommand)(float);
    void (Interface::*set)(float);
    float (Interface::*get)() const;
};
#define KIV_TEST_PROPERTY(Interface, name, initial)                                                \
    {                                                                                              \
#name, initial, &Interface::name##Cmd, &Interface::name, &Interface::name                  \
    }

/// Sets, undoes and redoes the property.
template <class Interface>
void expectEditable(Interface& object, const FloatProperty<Interface>& property)
{
    SCOPED_TRACE(property.name);
    EXPECT_EQ((object.*property.get)(), property.initial);
    const auto command = (object.*property.makeCommand)(12.5F);
    ASSERT_TRUE(command);
    EXPECT_EQ((object.*property.get)(), property.initial);
    command->execute();
    EXPECT_EQ((object.*property.get)(), 12.5F);
    command->undo();
    EXPECT_EQ((object.*property.get)(), property.initial);
    command->redo();
    EXPECT_TRUE(dynamic_cast<SetFloatUndoableCommand&>(*command).set(13));
    EXPECT_EQ((object.*property.get)(), 13);
    EXPECT_FALSE((object.*property.makeCommand)(NAN));
    (object.*property.set)(14);
    EXPECT_EQ((object.*property.get)(), 14);
}

struct MemoryScene : test::MemoryScene
{
    SceneItem::Ptr make(const Path& parent, const char* type, const char* name)
    {
        return model.make(parent, type, name);
    }
};

using Cameras = MemoryScene;
using Lights = MemoryScene;

/// A run-time of which every path is a gateway, the one that is asked about included.
struct Gateways : SceneSegmentHandler
{
    explicit Gateways(Path gatewayPath) : gateway(std::move(gatewayPath)) {}

    bool isGatewayItem(const Path&) override { return true; }
    Selection gatewayItems(const Path& path) override
    {
        Selection found;
        found.append(std::make_shared<test::Item>(path));
        found.append(std::make_shared<test::Item>(gateway));
        return found;
    }
    Selection gatewayItems(const Path& path, Rtid) override { return gatewayItems(path); }

    const Path gateway;
};

} // namespace

TEST_F(Cameras, AreEditedPropertyByPropertyAndAnnouncedOnce)
{
    const std::vector<FloatProperty<Camera>> properties = {
        KIV_TEST_PROPERTY(Camera, horizontalAperture, 36),
        KIV_TEST_PROPERTY(Camera, verticalAperture, 24),
        KIV_TEST_PROPERTY(Camera, horizontalApertureOffset, 0),
        KIV_TEST_PROPERTY(Camera, verticalApertureOffset, 0),
        KIV_TEST_PROPERTY(Camera, fStop, 5.6F),
        KIV_TEST_PROPERTY(Camera, focalLength, 35),
        KIV_TEST_PROPERTY(Camera, focusDistance, 5),
        KIV_TEST_PROPERTY(Camera, nearClipPlane, 0.1F),
        KIV_TEST_PROPERTY(Camera, farClipPlane, 10000),
    };
    const auto item = make(model.root(), "camera", "main");
    const auto camera = Camera::camera(item);
    ASSERT_TRUE(camera);
    std::size_t nbReceived = 0;
    const auto observer = Callback::make([&](const Notification& notification) {
        EXPECT_EQ(dynamic_cast<const CameraChanged&>(notification).item(), item);
        ++nbReceived;
    });
    Camera::addObserver(item, observer);
    for (const auto& property : properties) {
        nbReceived = 0;
        expectEditable(*camera, property);
        EXPECT_EQ(nbReceived, 5U) << "executed, undone, redone, set again, set";
    }
    for (const auto& property : properties) {
        EXPECT_EQ(((*camera).*property.get)(), 14) << property.name << " is its own";
    }
    EXPECT_EQ(camera->projection(), Camera::Perspective);
    camera->projection(Camera::Orthographic);
    EXPECT_EQ(camera->projection(), Camera::Orthographic);
    EXPECT_FALSE(camera->projectionCmd(static_cast<Camera::Projection>(7)));
    EXPECT_FALSE(Camera::camera(model.item(model.root()))) << "no camera";
}

TEST_F(Cameras, AreFoundInTheOrderOfTheHierarchyAndAcrossRunTimesOnce)
{
    const auto rig = make(model.root(), "group", "rig");
    make(model.root(), "camera", "last");
    const auto first = make(rig->path(), "camera", "first");
    make(first->path(), "camera", "inner");
    make(rig->path(), "mesh", "mesh");
    const auto gateway = make(rig->path(), "camera", "gateway");
    const std::vector<std::string> own = {"/world/rig/first", "/world/rig/first/inner",
                                          "/world/rig/gateway", "/world/last"};
    EXPECT_EQ(pathsOf(CameraHandler::find(model.root())), own);
    EXPECT_THAT(pathsOf(CameraHandler::find(first->path())), ElementsAre(own[0], own[1]));
    EXPECT_THAT(pathsOf(CameraHandler::find(rig->path() + "none")), IsEmpty());

    const test::Nested nested;
    model.setGateway(gateway->path(), nested.id());
    const auto mounted = PathString::string(nested.view(gateway->path())->path());
    EXPECT_EQ(pathsOf(CameraHandler::find(model.root())), own) << "within the run-time";
    EXPECT_THAT(pathsOf(CameraHandler::findAll(model.root())),
                ElementsAre(own[0], own[1], own[2], own[3], mounted));
    EXPECT_THAT(pathsOf(CameraHandler::findAll(gateway->path())), ElementsAre(own[2], mounted));

    EXPECT_THAT(pathsOf(CameraHandler::find(gateway->path())), ElementsAre(own[2]))
        << "within the run-time";

    RunTimeMgr::instance().setCameraHandler(runTime.id(), nullptr);
    EXPECT_THAT(pathsOf(CameraHandler::findAll(model.root())), ElementsAre(mounted));
    EXPECT_THAT(pathsOf(CameraHandler::findAll(nested.view(Path())->path())),
                ElementsAre(testing::EndsWith("view:view")));
}

TEST_F(Cameras, AreSearchedToAnEndAtAGatewayThatNamesItself)
{
    const RunTimeRegistration outer("outer", '.');
    const test::Nested nested;
    const Path top = PathSegment("top", outer.id(), '.');
    const auto mounted = nested.items->rootItems(top).front()->path();
    RunTimeMgr::instance().setSceneSegmentHandler(outer.id(), std::make_shared<Gateways>(mounted));
    EXPECT_EQ(CameraHandler::findAll(top).size(), 1U) << "without a camera handler of its own";
}

TEST_F(Cameras, AreFoundBehindEachGatewayOnceWhateverFailsBehindOthers)
{
    const auto outer = make(model.root(), "group", "outer");
    const auto inner = make(outer->path(), "group", "inner");
    const auto broken = make(model.root(), "group", "broken");
    const auto orphan = make(model.root(), "group", "orphan");
    const test::Nested nested;
    const RunTimeRegistration failing("failing", '.');
    struct Roots : test::HierarchyStub
    {
        SceneItemList rootItems(const Path&) override { throw std::runtime_error("unreadable"); }
    };
    RunTimeMgr::instance().setHierarchyHandler(failing.id(), std::make_shared<Roots>());
    model.setGateway(outer->path(), nested.id());
    model.setGateway(inner->path(), nested.id());
    model.setGateway(broken->path(), failing.id());
    model.setGateway(orphan->path(), 4711);
    make(orphan->path(), "camera", "last");
    testing::internal::CaptureStderr();
    EXPECT_THAT(pathsOf(CameraHandler::findAll(model.root())),
                ElementsAre("/world/orphan/last", "/world/outer,:stage:view",
                            "/world/outer/inner,:stage:view"));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("unreadable"));
}

TEST_F(Lights, OfferTheInterfacesOfTheirKind)
{
    for (const auto& [nodeType, type, offered] : {std::tuple("light", Light::Other, ""),
                                                  {"directionalLight", Light::Directional, "d"},
                                                  {"pointLight", Light::Point, "s"},
                                                  {"spotLight", Light::Spot, "sc"},
                                                  {"areaLight", Light::Area, "a"}}) {
        SCOPED_TRACE(nodeType);
        const auto item = make(model.root(), nodeType, nodeType);
        EXPECT_EQ(item->ancestorNodeTypes().front(), nodeType);
        EXPECT_EQ(item->ancestorNodeTypes().back(), "light");
        const auto light = Light::light(item);
        EXPECT_EQ(light->type(), type);
        EXPECT_EQ(std::string(light->directionalInterface() ? "d" : "") +
                      (light->sphereInterface() ? "s" : "") + (light->coneInterface() ? "c" : "") +
                      (light->areaInterface() ? "a" : ""),
                  offered);
    }
    EXPECT_FALSE(Light::light(model.item(model.root())));
}

TEST_F(Lights, AreEditedPropertyByPropertyAndAnnouncedOnce)
{
    const auto item = make(model.root(), "spotLight", "key");
    const auto light = Light::light(item);
    std::size_t nbReceived = 0;
    const auto observer = Callback::make([&](const Notification& notification) {
        EXPECT_EQ(dynamic_cast<const LightChanged&>(notification).item(), item);
        ++nbReceived;
    });
    Light::addObserver(item, observer);
    const std::vector<FloatProperty<Light>> properties = {KIV_TEST_PROPERTY(Light, intensity, 1),
                                                          KIV_TEST_PROPERTY(Light, diffuse, 1),
                                                          KIV_TEST_PROPERTY(Light, specular, 1)};
    for (const auto& property : properties) {
        expectEditable(*light, property);
    }
    EXPECT_EQ(nbReceived, 15U);

    light->color(1, 0.5F, 0);
    light->shadowColor(0, 0.5F, 1);
    light->shadowEnable(false);
    const auto again = light->colorCmd(1, 1, 1);
    again->execute();
    again->undo();
    EXPECT_EQ(light->color(), Color3f({1, 0.5F, 0}));
    EXPECT_EQ(light->shadowColor(), Color3f({0, 0.5F, 1}));
    EXPECT_FALSE(light->shadowEnable());
    EXPECT_TRUE(dynamic_cast<SetColor3fUndoableCommand&>(*again).set(Color3f({2, 2, 2})));
    EXPECT_EQ(light->color(), Color3f({2, 2, 2}));
    EXPECT_FALSE(light->colorCmd(0, INFINITY, 0));
}

TEST_F(Lights, EditWhatTheirKindHas)
{
    const auto lightOf = [&](const char* type) {
        return Light::light(make(model.root(), type, type));
    };
    expectEditable(*lightOf("directionalLight")->directionalInterface(),
                   KIV_TEST_PROPERTY(Light::DirectionalInterface, angle, 0));

    const auto spot = lightOf("spotLight");
    const auto before = spot->coneInterface()->coneProps();
    const auto cone = spot->coneInterface()->conePropsCmd(30, 5, 2);
    cone->execute();
    EXPECT_EQ(spot->coneInterface()->coneProps(), (Light::ConeProps{30, 5, 2}));
    EXPECT_TRUE(dynamic_cast<SetConePropsUndoableCommand&>(*cone).set({31, 6, 3}));
    EXPECT_EQ(spot->coneInterface()->coneProps(), (Light::ConeProps{31, 6, 3}));
    EXPECT_NE(spot->coneInterface()->coneProps(), (Light::ConeProps{31, 6, 2}));
    spot->coneInterface()->coneProps(32, 7, 4);
    EXPECT_EQ(spot->coneInterface()->coneProps(), (Light::ConeProps{32, 7, 4}));
    cone->undo();
    EXPECT_EQ(spot->coneInterface()->coneProps(), before);
    spot->sphereInterface()->sphereProps(2, true);
    EXPECT_EQ(spot->sphereInterface()->sphereProps(), (Light::SphereProps{2, true}));
    EXPECT_NE(spot->sphereInterface()->sphereProps(), (Light::SphereProps{2, false}));
    EXPECT_FALSE(spot->sphereInterface()->spherePropsCmd(NAN, true));

    const auto area = lightOf("areaLight")->areaInterface();
    area->normalize(true);
    EXPECT_TRUE(area->normalize());
}
