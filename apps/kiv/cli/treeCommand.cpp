#include "kiv/document/workspace.h"

#include "cli/filling.h"
#include "cli/programCommand.h"
#include "cli/usageTrouble.h"
#include "report/treeReport.h"
#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

namespace {

struct TreeOptions
{
    SceneWishes scene;
    host::OutlineFilter filter;
    TreeForm form = TreeForm::Drawing;
};

/// What cannot be made or read gets a complaint, and the rest is shown.
int tree(const TreeOptions& options, const Context& context)
{
    if (options.scene.size() == 0 && context.plugins.topItems().empty()) {
        throw WrongUsage("FILE is required");
    }
    document::Workspace scene;
    const auto failed = fill(scene, options.scene, context.plugins);
    const auto roots = rootsOf(scene, context.plugins);
    if (failed < options.scene.size() || roots.size() > 1) {
        writeTree(scene, roots, options.filter, options.form, context.output);
    }
    return failed == 0 ? kSuccess : kFailure;
}

} // namespace

Command defineTree(CLI::App& program)
{
    const auto options = std::make_shared<TreeOptions>();
    auto& syntax = *program.add_subcommand("tree", "Print the items of scene files as one tree");
    syntax.footer("Example: kiv tree --depth 3 workshop.gltf");
    defineScene(syntax, options->scene);
    syntax.add_option("--depth", options->filter.depth, "Show N levels below the root")
        ->type_name("N")
        ->check(notNegative());
    syntax
        .add_option("--type", options->filter.nodeType,
                    "Show the items of one node type alone; a drawn tree has their ancestors too")
        ->type_name("TYPE");
    auto* paths = syntax.add_flag_callback(
        "--paths", [options] { options->form = TreeForm::Paths; }, "Print one path per line");
    syntax
        .add_flag_callback(
            "--json", [options] { options->form = TreeForm::JsonText; },
            "Print a JSON array of items, parents before children")
        ->excludes(paths);
    return {&syntax, [options](const Context& context) { return tree(*options, context); }};
}

} // namespace app
