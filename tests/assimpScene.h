#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

#include "kiv/assimp/runTime.h"
#include "kiv/hierarchy.h"
#include "kiv/material.h"
#include "kiv/pathString.h"
#include "kiv/transform3d.h"

#include "memoryScene.h"

namespace test {

using namespace Kiv_v4;

/// A place that is moved, turned, sheared and scaled.
inline const Matrix4d
    kGatewayMatrix({{{0, 2, 0, 0}, {-2, 0, 0.5, 0}, {0, 0, 3, 0}, {10, -20, 30, 1}}});

/// A glTF document with a mesh, cameras and lights.
constexpr auto kSceneFile =
    R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[
{"name":"root","scale":[2,2,2],"children":[1,2,3,4,5,7]},
{"name":"box","mesh":0,"translation":[1,2,3],"rotation":[0,0,0.70710678,0.70710678],
 "extras":{"flag":true,"count":7,"note":"hi","big":9007199254740993,"materials":3,"inner":{"deep":-1}},"children":[6]},
{"name":"wide","camera":0},{"name":"flat","camera":1},
{"name":"spot","extensions":{"KHR_lights_punctual":{"light":0}}},
{"name":"sun","extensions":{"KHR_lights_punctual":{"light":1}}},
{"name":"near","camera":2},{"name":"thin","scale":[1,0,1]}],
"meshes":[{"primitives":[{"attributes":{"POSITION":0},"material":0}]}],
"materials":[{"name":"Oak"}],
"cameras":[{"type":"perspective","perspective":{"yfov":0.8,"aspectRatio":1.5,"znear":0.1,"zfar":50}},
{"type":"orthographic","orthographic":{"xmag":3,"ymag":2,"znear":1,"zfar":9}},
{"type":"perspective","perspective":{"yfov":0.5,"znear":1}}],
"extensionsUsed":["KHR_lights_punctual"],"extensions":{"KHR_lights_punctual":{"lights":[
{"type":"spot","color":[0.5,0.25,0],"intensity":8,"spot":{"innerConeAngle":0.2,"outerConeAngle":0.5}},
{"type":"directional"}]}},
"accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],
"bufferViews":[{"buffer":0,"byteLength":36}],"buffers":[{"byteLength":36,
"uri":"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]})";

/// Scene files under gateways of a scene in memory.
struct AssimpScene : MemoryScene
{
    ~AssimpScene() override { std::filesystem::remove(name); }

    /// A place in memory with the matrix above.
    Path gateway(const std::string& component) const
    {
        const auto path = model.root() + component;
        if (!model.item(path)) {
            const auto made = model.make(model.root(), "gateway", component);
            Transform3d::transform3d(made)->setMatrix(kGatewayMatrix);
        }
        return path;
    }

    /// The scene above, under a gateway of its own.
    Path mount(const std::string& component)
    {
        if (!file) {
            std::ofstream(name) << kSceneFile;
            file = assimp::read(name.string());
        }
        return files.mount(file, gateway(component))->path();
    }

    static SceneItem::Ptr item(const Path& path) { return Hierarchy::createItem(path); }
    static Transform3d::Ptr transform(const Path& path)
    {
        return Transform3d::transform3d(item(path));
    }

    std::filesystem::path name = std::filesystem::temp_directory_path() /
                                 ("kiv_interfaces_" + std::to_string(getpid()) + ".gltf");
    std::shared_ptr<const assimp::SceneFile> file;
    assimp::RunTime files;
};

/// The texts of the item's materials, which name these items; nothing for an item without.
inline std::vector<std::string> materialsOf(const SceneItem::Ptr& item)
{
    std::vector<std::string> texts;
    if (const auto bound = Material::material(item)) {
        for (const auto& material : bound->materials()) {
            texts.push_back(PathString::string(material->path()));
            const auto again = Hierarchy::createItem(PathString::path(texts.back()));
            EXPECT_TRUE(again && *again == *material) << texts.back();
            EXPECT_EQ(material->nodeType(), "material");
            const auto siblings =
                Hierarchy::hierarchy(Hierarchy::hierarchy(again)->parent())->children();
            EXPECT_TRUE(std::any_of(siblings.begin(), siblings.end(),
                                    [&](const auto& known) { return *known == *material; }));
        }
    }
    return texts;
}

} // namespace test
