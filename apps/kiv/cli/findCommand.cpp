#include "kiv/document/workspace.h"

#include "cli/filling.h"
#include "cli/programCommand.h"
#include "report/itemSearch.h"
#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

namespace {

struct FindOptions
{
    SceneWishes scene;
    Criteria criteria;
    FindForm form = FindForm::Table;
};

/// What cannot be made or read gets a complaint, and the rest is searched. Finding nothing is a
/// failure, too.
int find(const FindOptions& options, const Context& context)
{
    const auto nbTops = context.plugins.topItems().size();
    if (options.scene.files.empty() && nbTops == 0) {
        throw WrongUsage("FILE is required");
    }
    if (!options.criteria.any()) {
        throw WrongUsage("--cameras, --lights, --type or --name is required");
    }
    document::Workspace scene;
    const auto failed = fill(scene, options.scene);
    if (failed == options.scene.size() && nbTops == 0) {
        return kFailure;
    }
    const auto count = find(scene, rootsOf(scene, context.plugins), options.criteria, options.form,
                            context.output);
    return failed == 0 && count > 0 ? kSuccess : kFailure;
}

} // namespace

Command defineFind(CLI::App& program)
{
    const auto options = std::make_shared<FindOptions>();
    auto& syntax = *program.add_subcommand("find", "Print the items that meet all given criteria");
    syntax.footer(
        "Each FILE is mounted under /world, in an item named after the file. Prints node\n"
        "type, run-time and path of each item. The exit status is 0 when there is one, 1\n"
        "when there is none or something could not be made or read, 2 for wrong usage.\n"
        "Example: kiv find --type light *.gltf");
    auto& criteria = options->criteria;
    defineScene(syntax, options->scene);
    syntax.add_flag("--cameras", criteria.cameras, "Cameras");
    syntax.add_flag("--lights", criteria.lights, "Lights");
    syntax.add_option("--type", criteria.nodeType, "Items of one node type")->type_name("TYPE");
    syntax
        .add_option("--name", criteria.name,
                    "Items with a name like GLOB, in which * stands for any text, ? for any\n"
                    "character and [...] for one of several")
        ->type_name("GLOB");
    auto* paths = syntax.add_flag_callback(
        "--paths", [options] { options->form = FindForm::Paths; }, "Print one path per line");
    syntax
        .add_flag_callback(
            "--json", [options] { options->form = FindForm::JsonText; },
            "Print a JSON array of items")
        ->excludes(paths);
    return {&syntax, [options](const Context& context) { return find(*options, context); }};
}

} // namespace app
