// The run-times of the project, held against the contracts as authors hold theirs.
#include <gtest/gtest.h>

#include "kiv/assimp/runTime.h"
#include "kiv/assimp/sceneFile.h"
#include "kiv/attributes.h"
#include "kiv/conformance/failingAllocations.h"
#include "kiv/hierarchy.h"
#include "kiv/memory/runTime.h"

#include "conforming.h"

using namespace Kiv_v4;
using Kiv_v4::conformance::failingAllocations;
using test::expectConformance;

namespace {

/// A bit of everything that the memory run-time has.
void fill(memory::DataModel& model)
{
    const auto& root = model.root();
    for (const auto* type : {"group", "camera", "spotLight", "material", "mesh"}) {
        const auto item = model.make(root, type, type);
        model.make(item->path(), "mesh", "cube");
        model.make(item->path(), "group", "cube1");
    }
    const auto attributes = Attributes::attributes(model.item(root + std::string("mesh")));
    for (const auto* type :
         {Attribute::kBool, Attribute::kInt, Attribute::kFloat, Attribute::kDouble,
          Attribute::kString, Attribute::kColorFloat3, Attribute::kColorFloat4,
          Attribute::kFilename, Attribute::kEnumString, Attribute::kInt3, Attribute::kFloat2,
          Attribute::kFloat3, Attribute::kFloat4, Attribute::kDouble3, Attribute::kMatrix3d,
          Attribute::kMatrix4d, Attribute::kGeneric}) {
        attributes->addAttribute(type, std::string("a") + type);
    }
    model.setEnumValues(root + std::string("mesh"), "aEnumString", {"one", "two", "three"});
}

conformance::Running memoryScene()
{
    const auto runTime = std::make_shared<memory::RunTime>();
    fill(runTime->model());
    return {runTime, {}};
}

/// A scene file under a gateway of a scene in memory.
struct Mounted
{
    memory::RunTime scene;
    assimp::RunTime files;
};

conformance::Running mountedScene(const std::string& file)
{
    const auto both = std::make_shared<Mounted>();
    auto& model = both->scene.model();
    const auto gateway = model.make(model.root(), "gateway", "file")->path();
    model.setGateway(gateway, both->files.id());
    const auto root = both->files.mount(assimp::read(file), gateway);
    return {both, {root->path()}};
}

} // namespace

TEST(Conforming, Memory)
{
    expectConformance({"memory", memoryScene}, failingAllocations());
}

TEST(Conforming, SceneFiles)
{
    expectConformance({"assimp", [] { return mountedScene(KIV_EXAMPLES "/workshop.gltf"); }},
                      failingAllocations());
}
