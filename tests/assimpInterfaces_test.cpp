#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

#include "kiv/assimp/runTime.h"
#include "kiv/attributes.h"
#include "kiv/cameraHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/material.h"
#include "kiv/object3d.h"
#include "kiv/object3dNotification.h"
#include "kiv/pathString.h"
#include "kiv/selection.h"
#include "kiv/setValueCommands.h"
#include "kiv/transform3d.h"
#include "kiv/transform3dPathSubject.h"
#include "kiv/uiInfoHandler.h"

#include "assimpScene.h"
#include "callback.h"
#include "importerLeaks.h"
#include "items.h"
#include "matrices.h"

using namespace Kiv_v4;
using test::kGatewayMatrix;
using test::materialsOf;
using testing::ElementsAre;
using testing::FloatNear;

namespace fs = std::filesystem;

namespace {

using AssimpInterfaces = test::AssimpScene;

Path operator/(const Path& parent, const std::string& name)
{
    return parent + PathComponent::intern(name);
}

/// Expects the command to change what `state` gives, and to undo and redo that exactly.
template <class State>
void expectUndoable(const UndoableCommand::Ptr& command, State state)
{
    ASSERT_TRUE(command);
    const auto before = state();
    command->execute();
    const auto after = state();
    EXPECT_TRUE(before != after);
    command->undo();
    EXPECT_TRUE(before == state());
    command->redo();
    EXPECT_TRUE(after == state());
    command->undo();
    EXPECT_TRUE(before == state());
}

} // namespace

TEST_F(AssimpInterfaces, EditTransformsOverTheFilesMatrices)
{
    const auto box = mount("a") / "box";
    const auto edited = transform(box);
    auto received = 0;
    const auto observer = test::Callback::make([&received](const Notification&) { ++received; });
    Transform3d::addObserver(item(box), observer);
    const auto matrix = [&] { return edited->matrix(); };

    EXPECT_EQ(edited->translation(), Vector3d({1, 2, 3}));
    EXPECT_NEAR(edited->rotation().vector[2], 90, 1e-4);
    const auto first = edited->matrix();
    expectUndoable(edited->translateCmd(0.1, 0.2, 0.3), matrix);
    expectUndoable(edited->rotateCmd(10, 400, 30), matrix);
    expectUndoable(edited->scaleCmd(0, 2, -3), matrix);
    expectUndoable(edited->shearCmd(1, 2, 3), matrix);
    expectUndoable(edited->setMatrixCmd(kGatewayMatrix), matrix);
    EXPECT_EQ(received, 5 * 4);
    EXPECT_EQ(edited->matrix(), first);

    edited->translate(0.1, 0.2, 0.3);
    EXPECT_EQ(edited->matrix().matrix[0], first.matrix[0]) << "only the translation changed";
    edited->rotate(10, 400, 30);
    EXPECT_EQ(edited->rotation(), Vector3d({10, 400, 30}));
    edited->scale(0, 2, 2);
    edited->scale(2, 2, 2);
    EXPECT_EQ(edited->rotation(), Vector3d({10, 400, 30})) << "also through a scale of 0";
    ASSERT_LT(test::error(transform(box)->inclusiveMatrix(),
                          edited->matrix() * transform(box.pop())->matrix() * kGatewayMatrix),
              1e-9);

    const auto drag =
        std::dynamic_pointer_cast<SetDouble3UndoableCommand>(edited->translateCmd(1, 0, 0));
    drag->execute();
    EXPECT_TRUE(drag->set(2, 0, 0));
    EXPECT_FALSE(drag->set(std::numeric_limits<double>::infinity(), 0, 0));
    EXPECT_EQ(edited->translation(), Vector3d({2, 0, 0}));
    drag->undo();
    EXPECT_EQ(edited->translation(), Vector3d({0.1, 0.2, 0.3}));

    auto flat = kGatewayMatrix;
    flat.matrix[2] = {0, 0, 0, 0};
    auto projective = kGatewayMatrix;
    projective.matrix[0][3] = 1;
    EXPECT_FALSE(edited->setMatrixCmd(flat));
    EXPECT_FALSE(edited->setMatrixCmd(projective));
    EXPECT_FALSE(edited->translateCmd(std::nan(""), 0, 0));
    EXPECT_FALSE(edited->rotatePivotCmd(1, 2, 3));

    const auto thin = transform(box.sibling(std::string("thin")));
    expectUndoable(thin->translateCmd(4, 5, 6), [&] { return thin->matrix(); });
    EXPECT_FALSE(thin->rotateCmd(1, 2, 3)) << "singular";
}

TEST_F(AssimpInterfaces, KeepTheEditsOfEachMountApartAndWithIt)
{
    const auto first = mount("a");
    const auto second = mount("b");
    transform(first)->translate(1, 2, 3);
    EXPECT_EQ(transform(second)->translation(), Vector3d());

    const auto command = transform(first)->translateCmd(4, 5, 6);
    EXPECT_TRUE(files.moveMount(gateway("a"), gateway("c")));
    const auto moved = first.reparent(gateway("a"), gateway("c"));
    EXPECT_EQ(transform(moved)->translation(), Vector3d({1, 2, 3}));
    auto received = 0;
    const auto observer = test::Callback::make([&received](const Notification&) { ++received; });
    Transform3d::addObserver(item(moved), observer);
    command->execute();
    EXPECT_EQ(transform(moved)->translation(), Vector3d({4, 5, 6}));
    EXPECT_EQ(received, 1);

    const auto left = transform(moved);
    files.unmount(gateway("c"));
    EXPECT_THROW(command->undo(), std::runtime_error);
    EXPECT_FALSE(left->translateCmd(0, 0, 0));
    EXPECT_EQ(transform(mount("c"))->translation(), Vector3d());
}

TEST_F(AssimpInterfaces, StayWithTheirItemWhenItsGatewayIsRenamed)
{
    const auto root = mount("a");
    const auto kept = transform(root / "box");
    auto received = 0;
    const auto observer = test::Callback::make([&received](const Notification&) { ++received; });
    std::vector<std::unique_ptr<Transform3dPathSubject>> subjects;
    for (auto i = 0; i < 20; ++i) { // some before the run-time's observers, some behind
        subjects.push_back(std::make_unique<Transform3dPathSubject>(root / "box"));
        subjects.back()->addObserver(observer);
    }
    const auto before = kept->inclusiveMatrix();
    model.rename(gateway("a"), "b");
    EXPECT_EQ(PathString::string(kept->path()), "/world/b,:root:box");
    EXPECT_EQ(kept->inclusiveMatrix(), before);
    kept->translate(1, 2, 3);
    EXPECT_EQ(received, 20);
}

TEST_F(AssimpInterfaces, FindAndEditCamerasInMillimetres)
{
    const auto root = mount("a");
    EXPECT_THAT(test::namesOf(CameraHandler::findAll(root)), ElementsAre("near", "wide", "flat"));
    EXPECT_EQ(CameraHandler::find(root / "box").size(), 1U);
    EXPECT_FALSE(Camera::camera(item(root / "box")));

    const auto wide = Camera::camera(item(root / "wide"));
    EXPECT_EQ(wide->projection(), Camera::Perspective);
    EXPECT_EQ(wide->horizontalAperture(), 36);
    EXPECT_THAT(wide->verticalAperture(), FloatNear(24, 1e-4F));
    const auto verticalFov = [](const Camera& camera) {
        return 2 * std::atan(camera.verticalAperture() / (2 * camera.focalLength()));
    };
    EXPECT_THAT(verticalFov(*wide), FloatNear(0.8F, 1e-5F));
    EXPECT_THAT(verticalFov(*Camera::camera(item(root / "box" / "near"))), FloatNear(0.5F, 1e-5F));
    EXPECT_EQ(wide->nearClipPlane(), 0.1F);
    EXPECT_EQ(wide->farClipPlane(), 50);
    const auto flat = Camera::camera(item(root / "flat"));
    EXPECT_EQ(flat->projection(), Camera::Orthographic);
    EXPECT_EQ(flat->horizontalAperture(), 6);
    EXPECT_EQ(flat->verticalAperture(), 4);

    auto received = 0;
    const auto observer = test::Callback::make([&received](const Notification&) { ++received; });
    Camera::addObserver(item(root / "wide"), observer);
    expectUndoable(wide->focalLengthCmd(50), [&] { return wide->focalLength(); });
    expectUndoable(wide->projectionCmd(Camera::Orthographic), [&] { return wide->projection(); });
    EXPECT_EQ(received, 2 * 4);
    EXPECT_FALSE(wide->fStopCmd(std::nanf("")));
    EXPECT_FALSE(wide->projectionCmd(static_cast<Camera::Projection>(2)));
}

TEST_F(AssimpInterfaces, OfferLightsByKindWithAnglesInDegrees)
{
    const auto root = mount("a");
    const auto spot = Light::light(item(root / "spot"));
    EXPECT_EQ(spot->type(), Light::Spot);
    EXPECT_EQ(spot->intensity(), 4);
    EXPECT_EQ(spot->color(), Color3f({1, 0.5F, 0}));
    EXPECT_EQ(spot->specular(), 1);
    const auto cone = spot->coneInterface();
    EXPECT_THAT(cone->coneProps().coneAngle, FloatNear(0.4F * 57.29578F, 1e-4F));
    EXPECT_THAT(cone->coneProps().penumbraAngle, FloatNear(0.3F * 57.29578F, 1e-4F));
    EXPECT_TRUE(spot->sphereInterface());
    const auto sun = Light::light(item(root / "sun"));
    EXPECT_FALSE(sun->coneInterface());
    EXPECT_FALSE(Light::light(item(root)));

    auto received = 0;
    const auto observer = test::Callback::make([&received](const Notification&) { ++received; });
    Light::addObserver(item(root / "spot"), observer);
    expectUndoable(spot->colorCmd(0, 1, 0), [&] { return spot->color(); });
    expectUndoable(cone->conePropsCmd(1, 2, 3), [&] { return cone->coneProps(); });
    expectUndoable(spot->shadowEnableCmd(false), [&] { return spot->shadowEnable(); });
    EXPECT_EQ(received, 3 * 4);
    EXPECT_FALSE(cone->conePropsCmd(1, std::nanf(""), 3));

    const fs::path ambient = "/usr/share/assimp/models/Collada/lights.dae";
    if (fs::exists(ambient)) {
        const auto all = files.mount(assimp::read(ambient), gateway("all"));
        const auto hemi = Light::light(item(all->path() / "Hemi"));
        ASSERT_TRUE(hemi);
        EXPECT_EQ(hemi->type(), Light::Other);
        EXPECT_EQ(hemi->intensity(), 1) << "its ambient colour";
    }
}

TEST_F(AssimpInterfaces, ShowMetadataAsLockedAttributes)
{
    const auto root = mount("a");
    const auto attributes = Attributes::attributes(item(root / "box"));
    std::vector<std::string> listed;
    for (const auto& known : attributes->attributeNames()) {
        const auto attribute = attributes->attribute(known);
        listed.push_back(known + " " + attribute->type() + " " + attribute->string());
        EXPECT_TRUE(attribute->metadata(Attribute::kLocked).get<bool>());
        EXPECT_FALSE(attribute->setMetadataCmd("key", Value(1)));
    }
    EXPECT_THAT(listed,
                testing::UnorderedElementsAre("flag Bool true", "count Int 7", "note String hi",
                                              "big Generic 9007199254740993", "inner.deep Int -1",
                                              "materials Int 3"));
    const auto count = std::dynamic_pointer_cast<AttributeInt>(attributes->attribute("count"));
    EXPECT_EQ(count->get(), 7);
    EXPECT_THROW(count->set(8), std::invalid_argument);
    EXPECT_FALSE(count->setCmd(8));
    EXPECT_FALSE(attributes->attribute("no"));
}

TEST_F(AssimpInterfaces, TellTheFactsOfAFileAtItsRoot)
{
    const auto facts = Attributes::attributes(item(mount("a")));
    for (const auto& [fact, text] :
         std::vector<std::pair<const char*, const char*>>{{"file.format", "glTF2"},
                                                          {"file.formatVersion", "2.0"},
                                                          {"file.unit", "1"},
                                                          {"file.upAxis", "y"},
                                                          {"file.animations", "0"},
                                                          {"file.missingTextures", "0"}}) {
        ASSERT_TRUE(facts->hasAttribute(fact)) << fact;
        EXPECT_EQ(facts->attribute(fact)->string(), text);
    }
    const fs::path models = "/usr/share/assimp/models";
    if (!fs::exists(models)) {
        GTEST_SKIP() << "the importer's test models are not installed";
    }
    const auto factsOf = [&](const char* source) {
        return Attributes::attributes(
            files.mount(assimp::read(models / source), gateway(fs::path(source).stem())));
    };
    const auto fbx = factsOf("FBX/huesitos.fbx");
    EXPECT_EQ(fbx->attribute("file.unit")->string(), "0.01");
    EXPECT_EQ(fbx->attribute("file.metadata.CustomFrameRate")->string(), "25");
    EXPECT_EQ(fbx->attribute("file.animation.Armature|Action")->type(), Attribute::kDouble);
    const auto collada = factsOf("Collada/COLLADA.dae");
    EXPECT_EQ(collada->attribute("file.author")->string(), "alorino");
    EXPECT_EQ(collada->attribute("file.unit")->string(), "0.01");
    EXPECT_EQ(collada->attribute("file.sceneUnit")->string(), "1")
        << "the importer scales the root";
}

TEST_F(AssimpInterfaces, ShowTheExtentAndLookOfItems)
{
    const auto root = mount("a");
    const auto object = Object3d::object3d(item(root));
    const auto box = object->boundingBox();
    // A triangle to (1, 0, 0) and (0, 1, 0), a quarter turn about z and then moved.
    EXPECT_NEAR(box.min.vector[0], 0, 1e-6);
    EXPECT_NEAR(box.max.vector[0], 1, 1e-6);
    EXPECT_NEAR(box.max.vector[1], 3, 1e-6);
    EXPECT_EQ(box.max.vector[2], 3);
    transform(root / "box")->translate(11, 2, 3);
    EXPECT_NEAR(object->boundingBox().max.vector[0], 11, 1e-6);
    transform(root)->scale(2, 5, 5);
    EXPECT_NEAR(object->boundingBox().max.vector[1], 3, 1e-6) << "it is in the item's own space";
    EXPECT_TRUE(Object3d::object3d(item(root / "wide"))->boundingBox().empty());

    std::vector<Path> received;
    const auto observer = test::Callback::make([&received](const Notification& notification) {
        received.push_back(dynamic_cast<const VisibilityChanged&>(notification).path());
    });
    Object3d::addObserver(observer);
    expectUndoable(object->setVisibilityCmd(false), [&] { return object->visibility(); });
    EXPECT_THAT(received, ElementsAre(root, root, root, root));

    const auto look = UIInfoHandler::uiInfoHandler(files.id());
    EXPECT_EQ(look->treeViewIcon(item(root / "box")).base, "mesh");
    EXPECT_EQ(look->treeViewTooltip(item(root / "box")), "box\n" + name.string());
    EXPECT_THROW((void)look->treeViewIcon(nullptr), std::invalid_argument);
    EXPECT_THROW((void)look->treeViewTooltip(nullptr), std::invalid_argument);
}

TEST_F(AssimpInterfaces, OfferMaterialsBesideTheSceneAsItems)
{
    std::ofstream(name) << R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
"nodes":[{"name":"materials","children":[2,1]},{"name":"Oak","mesh":1},{"name":"cup","mesh":0}],
"meshes":[{"primitives":[{"attributes":{"POSITION":0},"material":1},
{"attributes":{"POSITION":0},"material":4}]},
{"primitives":[{"attributes":{"POSITION":0},"material":0},
{"attributes":{"POSITION":0},"material":1},{"attributes":{"POSITION":0},"material":3},
{"attributes":{"POSITION":0},"material":0},{"attributes":{"POSITION":0},"material":2}]}],
"materials":[{"name":"Oak"},{"name":"Oak"},{"name":"a:b,c\n"},{},{"name":"glass","doubleSided":true,
"emissiveFactor":[1,0.5,0],"pbrMetallicRoughness":{"baseColorFactor":[0.25,0.5,0.75,0.5],
"metallicFactor":0,"roughnessFactor":0.5,"baseColorTexture":{"index":0}}}],
"textures":[{"source":0}],"images":[{"uri":"wood.png"}],
"accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],
"bufferViews":[{"buffer":0,"byteLength":36}],"buffers":[{"byteLength":36,
"uri":"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]})";
    const auto root = files.mount(assimp::read(name.string()), gateway("in"));
    const auto mesh = item(root->path() / "Oak");
    EXPECT_THAT(materialsOf(mesh),
                ElementsAre("/world/in,:materials1:Oak1", "/world/in,:materials1:Oak",
                            "/world/in,:materials1:material", "/world/in,:materials1:a_b_c_"))
        << "each once, in the order of the parts";
    EXPECT_FALSE(Material::material(root));

    const auto top = item(PathString::path("/world/in,:materials1"));
    ASSERT_TRUE(top);
    EXPECT_EQ(Hierarchy::hierarchy(top)->children().size(), 5U);
    EXPECT_EQ(Hierarchy::hierarchy(top)->parent()->path(), gateway("in"));
    EXPECT_EQ(files.nbItems(gateway("in")), 3U) << "the scene's nodes only";
    EXPECT_EQ(files.originalName(top->path() / "a_b_c_"), "a:b,c\n");
    EXPECT_EQ(files.originalName(top->path() / "material"), "");

    const auto material = item(top->path() / "glass");
    const auto attributes = Attributes::attributes(material);
    std::vector<std::string> listed;
    for (const auto& known : attributes->attributeNames()) {
        const auto attribute = attributes->attribute(known);
        listed.push_back(known + " " + attribute->type() + " " + attribute->string());
        EXPECT_TRUE(attribute->metadata(Attribute::kLocked).get<bool>());
    }
    EXPECT_THAT(listed,
                testing::IsSupersetOf({"baseColor ColorFloat4 (0.25, 0.5, 0.75, 0.5)",
                                       "emissiveColor ColorFloat3 (1, 0.5, 0)", "metallic Float 0",
                                       "roughness Float 0.5", "twoSided Bool true",
                                       "baseColorTexture Filename wood.png"}));
    EXPECT_FALSE(Transform3d::transform3d(material));
    EXPECT_FALSE(Object3d::object3d(material));
    EXPECT_FALSE(Hierarchy::hierarchy(material)->hasChildren());
    EXPECT_FALSE(item(material->path() / "deeper"));

    const auto bound = Material::material(mesh);
    files.moveMount(gateway("in"), gateway("moved"));
    EXPECT_EQ(PathString::string(bound->materials().front()->path()),
              "/world/moved,:materials1:Oak1");
    files.unmount(gateway("moved"));
    EXPECT_TRUE(bound->materials().empty());
}

TEST_F(AssimpInterfaces, RefuseOnlyFilesThatHaveNothingToShow)
{
    const auto written = [this](const std::string& nodes) {
        std::ofstream(name) << R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[)" +
                                   std::string(nodes.empty() ? "" : "0") + R"(]}],"nodes":[)" +
                                   nodes + R"(],"cameras":[{"type":"perspective",
"perspective":{"yfov":1,"znear":1}}]})";
        return name.string();
    };
    for (const auto* nodes : {R"({"name":"eye","camera":0})", R"({"name":"empty"})",
                              R"({"name":"a","children":[1]},{"name":"b"})"}) {
        EXPECT_NO_THROW((void)assimp::read(written(nodes))) << nodes;
    }
    EXPECT_THROW((void)assimp::read(written("")), assimp::ImportError);
}
