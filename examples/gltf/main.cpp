// Opens a glTF document, edits it through the library and takes all of it back.
#include <fstream>
#include <iostream>

#include "kiv/host/undoHistory.h"

#include "gltfRunTime.h"

namespace {

Kiv::SceneItem::Ptr item(const std::string& path)
{
    return Kiv::Hierarchy::createItem(Kiv::PathString::path(path));
}

void printTree(const Kiv::SceneItem::Ptr& top, const std::string& indentation = "")
{
    std::cout << indentation << top->nodeName() << " (" << top->nodeType() << ')';
    if (const auto transform = Kiv::Transform3d::transform3d(top)) {
        std::cout << " at " << textOf(Kiv::AttributeVariant(transform->translation()));
    }
    if (const auto attributes = Kiv::Attributes::attributes(top)) {
        for (const auto& name : attributes->attributeNames()) {
            std::cout << ' ' << name << '=' << attributes->attribute(name)->string();
        }
    }
    std::cout << '\n';
    for (const auto& child : Kiv::Hierarchy::hierarchy(top)->children()) {
        printTree(child, indentation + "  ");
    }
}

void execute(const Kiv::UndoableCommand::Ptr& command)
{
    std::cout << command->commandString() << '\n';
    Kiv::UndoableCommandMgr::instance().executeCmd(command);
}

} // namespace

int main()
{
    const auto history = std::make_shared<Kiv::host::UndoHistory>();
    Kiv::UndoableCommandMgr::initializeInstance(history);
    {
        std::ifstream file("gltf/desk.gltf");
        const GltfRunTime desk(GltfDocument(GltfDocument::Json::parse(file)));
        printTree(item(":Desk"));
        for (const auto& found : Kiv::CameraHandler::find(item(":Desk")->path())) {
            std::cout << found->nodeName() << " has a lens of "
                      << Kiv::Camera::camera(found)->focalLength() << " mm\n";
        }

        std::cout << '\n';
        const auto lamp = item(":Desk:Lamp");
        execute(setValueCmd(*Kiv::Attributes::attributes(lamp)->attribute("watts"), 40.0));
        execute(Kiv::Transform3d::transform3d(lamp)->rotateCmd(0, 90, 0));
        execute(Kiv::SceneItemOps::sceneItemOps(lamp)->duplicateItemCmd());
        execute(Kiv::SceneItemOps::sceneItemOps(lamp)->renameItemCmd(std::string("Desk: lamp")));
        execute(Kiv::Hierarchy::hierarchy(item(":Desk:Lamp1"))
                    ->insertChildCmd(item(":Desk:Desk_ lamp"), nullptr));
        execute(Kiv::SceneItemOps::sceneItemOps(item(":Desk:View"))->deleteItemCmd());
        printTree(item(":Desk"));

        std::cout << "\nundo all\n";
        while (history->undo()) {
        }
        printTree(item(":Desk"));
    }
    history->clear();
    Kiv::UndoableCommandMgr::initializeInstance(nullptr);
}
