#include <exception>

#include "kiv/document/workspace.h"

#include "cli/filling.h"
#include "cli/programCommand.h"
#include "report/itemReport.h"
#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

namespace {

struct ShowOptions
{
    SceneWishes scene;
    std::string file;
    std::string path;
    bool json = false;
};

/// `file` is empty for an item that no file is mounted for.
int show(const ShowOptions& options, const std::string& file, const std::string& path,
         Output& output)
{
    document::Workspace scene;
    const auto notMade = fill(scene, options.scene);
    auto gateway = scene.root()->path();
    try {
        if (!file.empty()) {
            gateway = scene.mount(file);
        }
    } catch (const std::exception& error) {
        complain(file, error.what());
        return kFailure;
    }
    const auto item = scene.item(path, gateway);
    if (!item) {
        complain(path, "no such item");
        return kFailure;
    }
    const auto isComplete = show(scene, item, path, options.json, output);
    return isComplete && notMade == 0 ? kSuccess : kFailure;
}

} // namespace

Command defineShow(CLI::App& program)
{
    const auto options = std::make_shared<ShowOptions>();
    auto& syntax = *program.add_subcommand("show", "Print all that one item offers");
    syntax.footer(
        "Angles are in degrees, apertures and focal lengths in millimetres, other lengths in\n"
        "scene units, colors linear; matrices are for row vectors, with the translation in\n"
        "the last row. The world matrix takes every gateway above the item; there is none\n"
        "when one of them has no transform. JSON has null for what is no finite number.\n"
        "Example: kiv show workshop.gltf Workshop/Lamp/Bulb");
    syntax.add_option("FILE", options->file, "Scene file; not for an item of a plug-in")
        ->type_name("")
        ->required();
    syntax
        .add_option("PATH", options->path,
                    "The item's path as printed by kiv tree --paths, or the part of it that lies\n"
                    "in the file, such as :root:node or root:node")
        ->type_name("");
    defineMake(syntax, options->scene);
    syntax.add_flag("--json", options->json, "Print a JSON object");
    return {&syntax, [options, &syntax](const Context& context) {
                if (syntax.count("PATH") > 0) {
                    return show(*options, options->file, options->path, context.output);
                }
                if (context.plugins.all().empty()) {
                    throw WrongUsage("PATH is required");
                }
                return show(*options, "", options->file, context.output);
            }};
}

} // namespace app
