// The ideas of the library: paths, items, interfaces, gateways. Run in this folder.
#include <iostream>

#include "kiv/assimp/runTime.h"
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"

namespace {

void printPath(const Kiv::Path& path)
{
    std::cout << Kiv::PathString::string(path) << '\n';
    for (const auto& segment : path.getSegments()) {
        std::cout << "  " << Kiv::RunTimeMgr::instance().getName(segment.runTimeId()) << ": ";
        for (const auto& component : segment) {
            std::cout << component.string() << ' ';
        }
        std::cout << '\n';
    }
}

/// Visits an item and its descendants, whatever their run-times.
void printOutline(const Kiv::SceneItem::Ptr& item, int depth)
{
    std::cout << std::string(2 * static_cast<std::size_t>(depth), ' ') << item->nodeName() << " ("
              << item->nodeType() << ")\n";
    for (const auto& child : Kiv::Hierarchy::hierarchy(item)->children()) {
        printOutline(child, depth + 1);
    }
}

void printWhatItOffers(const Kiv::SceneItem::Ptr& item)
{
    std::cout << item->nodeName()
              << (Kiv::Camera::camera(item) ? " is a camera" : " is not a camera")
              << (Kiv::Transform3d::transform3d(item) ? " with a place\n" : " without a place\n");
}

} // namespace

int main()
{
    Kiv::memory::RunTime host;
    Kiv::assimp::RunTime files;
    auto& model = host.model();

    const auto set = model.make(model.root(), "group", "set");
    model.setGateway(set->path(), files.id());
    files.mount(Kiv::assimp::read("workshop.gltf"), set->path());

    const auto path = Kiv::PathString::path("/world/set,:Workshop:Bench:Vice");
    printPath(path);
    printPath(path.pop());
    printPath(path.popSegment());
    std::cout << '\n';

    printOutline(Kiv::Hierarchy::createItem(Kiv::PathString::path("/world/set,:Workshop:Tools")),
                 0);

    const auto vice = Kiv::Hierarchy::createItem(path);
    std::cout << "parent: " << Kiv::Hierarchy::hierarchy(vice)->parent()->nodeName() << '\n';
    std::cout << "found again: " << (*vice == *Kiv::Hierarchy::createItem(path)) << '\n';

    printWhatItOffers(vice);
    printWhatItOffers(
        Kiv::Hierarchy::createItem(Kiv::PathString::path("/world/set,:Workshop:View")));
    std::cout << '\n';

    const auto root = Kiv::Hierarchy::createItem(Kiv::PathString::path("/world/set,:Workshop"));
    const auto gateway = Kiv::Hierarchy::hierarchy(root)->parent();
    Kiv::Transform3d::transform3d(gateway)->translate(10, 0, 0);
    const auto local = Kiv::Transform3d::transform3d(vice)->matrix();
    const auto world = Kiv::Transform3d::transform3d(vice)->inclusiveMatrix();
    std::cout << "x: " << local.matrix[3][0] << " under its parent, " << world.matrix[3][0]
              << " in the world\n";
}
