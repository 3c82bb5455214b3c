#include <stdexcept>

#include "kiv/document/workspace.h"
#include "kiv/hierarchy.h"
#include "kiv/host/itemLookup.h"
#include "kiv/host/itemPattern.h"

#include "cli/filling.h"
#include "cli/programCommand.h"
#include "report/itemReport.h"
#include "terminal/diagnostics.h"
#include "terminal/progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

struct ShowOptions
{
    SceneWishes scene;
    std::string file;
    std::vector<std::string> paths;
    std::string columns;
    bool json = false;
};

/// The items that a word names: one, or those like a pattern. Throws `std::runtime_error` for none.
std::vector<SceneItem::Ptr> itemsNamed(const document::Workspace& scene, const std::string& word,
                                       const Path& gateway)
{
    if (const auto item = scene.item(word, gateway)) {
        return {item};
    }
    const auto top = Hierarchy::createItem(gateway);
    ProgressLine progress("searching items");
    auto items = host::isPattern(word)
                     ? host::itemsLike(scene.root(), top, word, progress.counter())
                     : std::vector<SceneItem::Ptr>();
    if (items.empty()) {
        static_cast<void>(host::requireItem(scene.root(), top, word)); // knows what was meant
        throw std::runtime_error("no such item '" + word + "'");
    }
    return items;
}

/// `file` is empty for items that no file is mounted for.
int show(const ShowOptions& options, const std::string& file, const std::vector<std::string>& paths,
         const Context& context)
{
    auto& output = context.output;
    document::Workspace scene;
    auto failed = fill(scene, options.scene, context.plugins);
    auto gateway = scene.root()->path();
    const auto mount = [&](const std::string& one) {
        gateway = bring(scene, one, context.plugins);
    };
    if (!file.empty() && failures({file}, mount) > 0) {
        return kFailure;
    }
    std::vector<SceneItem::Ptr> items;
    for (const auto& path : paths) {
        try {
            const auto named = itemsNamed(scene, path, gateway);
            items.insert(items.end(), named.begin(), named.end());
        } catch (const document::Cancelled&) {
            throw;
        } catch (const std::runtime_error& error) {
            complain(error.what());
            ++failed;
        }
    }
    if (items.empty()) {
        return kFailure;
    }
    if (items.size() > 1 || !options.columns.empty()) {
        showTable(items, options.columns, options.json, output);
    } else if (!show(scene, items.front(), paths.front(), options.json, output)) {
        ++failed;
    }
    return failed == 0 ? kSuccess : kFailure;
}

} // namespace

Command defineShow(CLI::App& program)
{
    const auto options = std::make_shared<ShowOptions>();
    auto& syntax =
        *program.add_subcommand("show", "Print all that an item offers, or a table of several");
    syntax.footer(
        "Angles are in degrees, apertures and focal lengths in millimetres, other lengths in "
        "scene units, colors linear; matrices are for row vectors, with the translation in "
        "the last row. The world matrix takes every gateway above the item; there is none "
        "when one of them has no transform. JSON has null for what is no finite number.\n"
        "Example: kiv show workshop.gltf Workshop:Lamp:Bulb");
    syntax.add_option("FILE", options->file, "Scene file; not for an item of a run-time of others")
        ->type_name("")
        ->required();
    syntax
        .add_option("PATH", options->paths,
                    "The items' paths as printed by kiv tree --paths, or the parts of them that "
                    "lie in the file, such as :root:node, or patterns such as '**/Lamp*'")
        ->type_name("");
    defineMake(syntax, options->scene);
    syntax
        .add_option("--columns", options->columns,
                    "Print a table with these properties and attributes, separated by commas")
        ->type_name("NAMES");
    syntax.add_flag("--json", options->json, "Print a JSON object, or an array of several");
    return {&syntax, [options, &syntax](const Context& context) {
                if (syntax.count("PATH") > 0) {
                    return show(*options, options->file, options->paths, context);
                }
                if (context.plugins.topItems().empty()) {
                    throw WrongUsage("PATH is required");
                }
                return show(*options, "", {options->file}, context);
            }};
}

} // namespace app
