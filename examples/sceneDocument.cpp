// A host with a document: it mounts a file, edits, undoes, saves, and opens the file again.

#include "kiv/document/sceneDocument.h"

#include <filesystem>
#include <iostream>

#include "kiv/hierarchy.h"
#include "kiv/host/itemProperties.h"
#include "kiv/host/outline.h"
#include "kiv/host/transaction.h"
#include "kiv/host/undoHistory.h"
#include "kiv/pathString.h"
#include "kiv/scene.h"

using namespace Kiv_v4;

namespace {

void print(const document::Workspace& scene)
{
    for (const auto& row : host::outline(scene.root(), {2, ""})) {
        std::cout << std::string(2 * row.depth, ' ') << row.name.string() << '\n';
    }
}

void edit(document::Workspace& scene)
{
    host::Transaction edits("light the stage");
    const auto creation =
        Hierarchy::hierarchy(scene.root())->createChildCmd("pointLight", PathComponent("lamp"));
    const host::ItemProperties properties(edits.runFor(creation)->sceneItem());
    const auto& intensity = *host::findProperty(host::kLight, "intensity");
    edits.run(properties.setCmd(intensity, 2.5F));
    edits.commit();
    std::cout << intensity.label << ": " << host::valueText(*properties.value(intensity)) << '\n';
}

} // namespace

int main()
{
    const auto history = std::make_shared<host::UndoHistory>();
    Scene::initializeInstance(std::make_shared<Scene>());
    UndoableCommandMgr::initializeInstance(history);
    const auto file = (std::filesystem::temp_directory_path() / "kiv_example.json").string();
    {
        document::Workspace scene;
        scene.mount("workshop.gltf");
        edit(scene);
        document::save(scene, file);
        history->undo();
        print(scene);
        document::open(scene, file); // one undo step
        print(scene);
        history->clear();
    }
    std::filesystem::remove(file);
    UndoableCommandMgr::initializeInstance(nullptr);
    Scene::initializeInstance(nullptr);
}
