#include "cli/filling.h"

#include <chrono>
#include <stdexcept>

#include "kiv/document/sceneDocument.h"
#include "kiv/host/itemLookup.h"

#include "cli/programCommand.h"
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

/// `text` is `SECONDS` or `SECONDS,MB`.
document::Isolation isolationOf(const std::string& text)
{
    document::Isolation isolation;
    long seconds = 0;
    std::size_t megabytes = isolation.memory >> 20U;
    const auto comma = text.find(',');
    if (!CLI::detail::lexical_cast(text.substr(0, comma), seconds) || seconds < 1 ||
        (comma != std::string::npos &&
         !CLI::detail::lexical_cast(text.substr(comma + 1), megabytes))) {
        throw WrongUsage("--isolated: expected SECONDS or SECONDS,MB: '" + text + "'");
    }
    isolation.time = std::chrono::seconds(seconds);
    isolation.memory = megabytes << 20U;
    return isolation;
}

} // namespace

void defineIsolation(CLI::App& command, std::optional<document::Isolation>& isolation)
{
    const std::string description =
        "Read in a child process first; by default within 60 s and 4096 MB";
    command.add_flag("--isolated{60}", description)
        ->each([&isolation](const std::string& text) { isolation = isolationOf(text); })
        ->type_name("[=S,MB]");
}

void defineMake(CLI::App& command, SceneWishes& wishes)
{
    command
        .add_option("--make", wishes.itemsToMake, "Make an item first: --make group:/world/props")
        ->type_name("TYPE:PATH")
        ->allow_extra_args(false);
    defineIsolation(command, wishes.isolation);
}

void defineScene(CLI::App& command, SceneWishes& wishes)
{
    command.add_option("FILE", wishes.files, "Scene files, each mounted under /world by its name")
        ->type_name("");
    defineMake(command, wishes);
}

Path bring(document::Workspace& scene, const std::string& file, Plugins& plugins)
{
    if (!plugins.openIfForPython(file)) {
        if (!file.ends_with(".json")) {
            return scene.mount(file);
        }
        document::open(scene, file);
    }
    return scene.root()->path();
}

std::size_t fill(document::Workspace& scene, const SceneWishes& wishes, Plugins& plugins)
{
    scene.setIsolation(wishes.isolation);
    ReadingProgress progress(wishes.files.size());
    const auto failed =
        failures(wishes.itemsToMake, [&](const std::string& item) { make(scene, item); }) +
        failures(wishes.files, [&](const std::string& file) {
            progress.showNext(scene);
            bring(scene, file, plugins);
        });
    showReading(scene);
    return failed;
}

SceneItemList rootsOf(const document::Workspace& scene, const Plugins& plugins)
{
    auto roots = plugins.topItems();
    roots.push_front(scene.root());
    return roots;
}

} // namespace app
