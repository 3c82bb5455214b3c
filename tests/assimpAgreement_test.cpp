// What scene files show, compared with the importer itself on all its test models.
#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <clocale>
#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <locale>

#include "kiv/assimp/runTime.h"
#include "kiv/cameraHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/object3d.h"
#include "kiv/selection.h"
#include "kiv/transform3d.h"

#include "assimpScene.h"
#include "importerLeaks.h"
#include "items.h"
#include "matrices.h"

using namespace Kiv_v4;
using test::kGatewayMatrix;
using test::materialsOf;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

namespace {

using AssimpAgreement = test::AssimpScene;

Matrix4d forRows(const aiMatrix4x4& from)
{
    Matrix4d matrix;
    for (unsigned row = 0; row < 4; ++row) {
        for (unsigned column = 0; column < 4; ++column) {
            matrix.matrix[row][column] = from[column][row];
        }
    }
    return matrix;
}

double degreesBetween(const std::array<double, 3>& a, const std::array<double, 3>& b)
{
    const auto product = a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
    return std::acos(product / std::hypot(a[0], a[1], a[2]) / std::hypot(b[0], b[1], b[2])) *
           57.29578;
}

/// Whether the item's matrix, and those of its children, may differ from their nodes'.
bool isPlaced(const SceneItem::Ptr& item)
{
    return item->nodeType() == "camera" || item->nodeType() == "light";
}

/// Compares the items at and under `root`, world matrices first, with what the importer gives.
void expectSame(const SceneItem::Ptr& root, const aiScene& scene)
{
    struct Pair
    {
        SceneItem::Ptr item;
        const aiNode* node;
        Matrix4d toWorld;
    };
    std::vector<Pair> pairs{
        {root, scene.mRootNode, forRows(scene.mRootNode->mTransformation) * kGatewayMatrix}};
    unsigned nbCameras = 0;
    unsigned nbLights = 0;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto [item, node, toWorld] = pairs[i];
        const auto transform = Transform3d::transform3d(item);
        if (!isPlaced(item)) {
            if (!isPlaced(Hierarchy::hierarchy(item)->parent())) {
                EXPECT_EQ(transform->matrix(), forRows(node->mTransformation));
            }
            ASSERT_LT(test::error(transform->inclusiveMatrix(), toWorld), 1e-9);
        }
        ASSERT_LT(test::error(transform->matrix() * transform->exclusiveMatrix(),
                              transform->inclusiveMatrix()),
                  1e-9);
        EXPECT_EQ(materialsOf(item).empty(), node->mNumMeshes == 0);
        nbCameras += Camera::camera(item) ? 1 : 0;
        nbLights += Light::light(item) ? 1 : 0;
        for (unsigned child = 0; const auto& below : Hierarchy::hierarchy(item)->children()) {
            const auto* source = node->mChildren[child++];
            pairs.push_back({below, source, forRows(source->mTransformation) * toWorld});
        }
    }
    EXPECT_EQ(nbCameras, scene.mNumCameras);
    EXPECT_EQ(nbLights, scene.mNumLights);
    EXPECT_EQ(CameraHandler::find(root->path()).size(), scene.mNumCameras);
}

} // namespace

TEST_F(AssimpAgreement, AgreeWithTheImporterOnEveryModelAndPrintNothing)
{
    const fs::path models = "/usr/share/assimp/models";
    if (!fs::exists(models)) {
        GTEST_SKIP() << "the importer's test models are not installed";
    }
    std::size_t nbCompared = 0;
    for (const auto& entry : fs::recursive_directory_iterator(models)) {
        const auto source = entry.path().string();
        SCOPED_TRACE(source);
        SceneItem::Ptr root;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        try {
            root = files.mount(assimp::read(source), gateway("all"));
        } catch (const assimp::ImportError& error) {
            EXPECT_EQ(error.what(), source + ": " + error.reason());
            EXPECT_THAT(error.reason(), Not(AnyOf("", HasSubstr("\n"), HasSubstr(source))));
        }
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        if (root) {
            const auto items = test::allUnder(root);
            EXPECT_EQ(items.size(), files.nbItems(gateway("all")));
            test::expectReachable(items);
            // The importer reads as it should in the classic locale only.
            const std::string hosts = std::setlocale(LC_ALL, nullptr);
            const auto global = std::locale::global(std::locale::classic());
            Assimp::Importer importer;
            const auto* scene = importer.ReadFile(source, aiProcess_ValidateDataStructure);
            std::locale::global(global);
            std::setlocale(LC_ALL, hosts.c_str());
            ASSERT_TRUE(scene);
            expectSame(root, *scene);
            files.unmount(gateway("all"));
            ++nbCompared;
        }
    }
    EXPECT_GT(nbCompared, 0U);
}

TEST_F(AssimpAgreement, LetCamerasAndLightsFaceWhatTheFilesMean)
{
    struct Case
    {
        const char* file;
        const char* item;
        double degrees; ///< At most, between its -z and the way to the middle of the scene.
    };
    const Case cases[] = {{"FBX/spider.fbx", "Camera", 16},
                          {"FBX/huesitos.fbx", "Camera", 22},
                          {"FBX/global_settings.fbx", "Camera.001", 4},
                          {"FBX/global_settings.fbx", "Lamp.001", 4},
                          {"FBX/animation_with_skeleton.fbx", "Light", 8},
                          {"NFF/NFF/WithCamera.nff", "<NFF_Camera>", 4},
                          {"NFF/NFF/ManyEarthsNotJustOne.nff", "<NFF_Camera>", 4},
                          {"Collada/duck.dae", "camera1", 6},
                          {"glTF2/cameras/Cameras.gltf", "nodes[1]", 4},
                          {"BLEND/box.blend", "Camera", 2},
                          {"ASE/CameraRollAnim.ase", "Camera01", 2},
                          {"LWS/move_x.lws", "Camera_(30000000)", 2}};
    const fs::path models = "/usr/share/assimp/models";
    if (!fs::exists(models)) {
        GTEST_SKIP() << "the importer's test models are not installed";
    }
    for (const auto& [source, wanted, degrees] : cases) {
        SCOPED_TRACE(std::string(source) + " " + wanted);
        files.unmount(gateway("all"));
        const auto root = files.mount(assimp::read(models / source), gateway("all"));
        const auto items = test::allUnder(root);
        const std::string called = wanted; // Clang 14 captures no structured binding
        const auto found = std::find_if(items.begin(), items.end(), [&](const auto& known) {
            return isPlaced(known) && files.originalName(known->path()) == called;
        });
        ASSERT_NE(found, items.end());
        const auto box = Object3d::object3d(root)->boundingBox();
        const auto middle = test::translationOf((box.min.vector[0] + box.max.vector[0]) / 2,
                                                (box.min.vector[1] + box.max.vector[1]) / 2,
                                                (box.min.vector[2] + box.max.vector[2]) / 2);
        const auto there = (middle * Transform3d::transform3d(root)->matrix()).matrix[3];
        const auto own = Transform3d::transform3d(*found)->segmentInclusiveMatrix().matrix;
        EXPECT_LT(
            degreesBetween({-own[2][0], -own[2][1], -own[2][2]},
                           {there[0] - own[3][0], there[1] - own[3][1], there[2] - own[3][2]}),
            degrees);
    }
}
