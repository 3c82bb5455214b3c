// The run-times of the guides, held against the contracts. The glTF document is not edited while
// memory runs out, since its JSON needs memory to be destroyed.
#include <fstream>

#include "kiv/conformance/failingAllocations.h"

#include "conforming.h"
#include "gltf/gltfRunTime.h"
#include "shotList/runTime.h"

using Kiv_v4::conformance::failingAllocations;
using Kiv_v4::conformance::Running;
using test::expectConformance;

TEST(Conforming, ShotList)
{
    expectConformance({"shotList",
                       [] {
                           Entry show{"pilot", "show", 0, 0, {}};
                           for (const auto* name : {"sq010", "sq020", "sq030"}) {
                               show.children.push_back({name, "sequence", 0, 0, {}});
                               auto& shots = show.children.back().children;
                               shots.push_back({"sh010", "shot", 1001, 1048, {}});
                               shots.push_back({"sh020", "shot", 1001, 1100, {}});
                           }
                           return Running{std::make_shared<ShotListRunTime>(std::move(show)), {}};
                       }},
                      failingAllocations());
}

TEST(Conforming, Gltf)
{
    expectConformance(
        {"gltf",
         [] {
             std::ifstream file(KIV_EXAMPLES "/gltf/desk.gltf");
             return Running{
                 std::make_shared<GltfRunTime>(GltfDocument(GltfDocument::Json::parse(file))), {}};
         }},
        {});
}
