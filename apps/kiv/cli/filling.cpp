#include "cli/filling.h"

#include <stdexcept>

#include "kiv/host/itemLookup.h"

#include "terminal/progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

void make(document::Workspace& scene, const std::string& typeAndPath)
{
    const auto colon = typeAndPath.find(':');
    const auto path =
        colon == std::string::npos ? Path() : host::pathOf(typeAndPath.substr(colon + 1));
    if (colon == 0 || path.size() < 2) {
        throw std::invalid_argument("not of the form TYPE:PATH with PATH under /" +
                                    scene.root()->nodeName());
    }
    scene.model().make(path.pop(), typeAndPath.substr(0, colon), path.back().string());
}

} // namespace

void defineMake(CLI::App& command, SceneWishes& wishes)
{
    command
        .add_option("--make", wishes.itemsToMake, "Make an item first: --make group:/world/props")
        ->type_name("TYPE:PATH")
        ->allow_extra_args(false);
}

void defineScene(CLI::App& command, SceneWishes& wishes)
{
    command.add_option("FILE", wishes.files, "Scene files, each mounted under /world by its name")
        ->type_name("");
    defineMake(command, wishes);
}

std::size_t fill(document::Workspace& scene, const SceneWishes& wishes)
{
    showReading(scene);
    return failures(wishes.itemsToMake, [&](const std::string& item) { make(scene, item); }) +
           failures(wishes.files, [&](const std::string& file) { scene.mount(file); });
}

SceneItemList rootsOf(const document::Workspace& scene, const Plugins& plugins)
{
    auto roots = plugins.topItems();
    roots.push_front(scene.root());
    return roots;
}

} // namespace app
