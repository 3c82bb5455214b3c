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
        throw WrongUsage(kNoCriterion);
    }
    try {
        const Sieve check(options.criteria);
    } catch (const std::invalid_argument& error) {
        throw WrongUsage(error.what());
    }
    document::Workspace scene;
    const auto failed = fill(scene, options.scene, context.plugins);
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
    syntax.footer("The exit status is 0 when there are such items, 1 when not, 2 for wrong usage.\n"
                  "Example: kiv find --name '*cam*' --attribute 'focalLength>50' *.gltf");
    auto& criteria = options->criteria;
    defineScene(syntax, options->scene);
    syntax.add_flag("--cameras", criteria.cameras, "Cameras");
    syntax.add_flag("--lights", criteria.lights, "Lights");
    syntax.add_option("--type", criteria.nodeType, "Items of one node type")->type_name("TYPE");
    syntax.add_option("--name", criteria.name, "Items named like GLOB, with *, ? and [...]")
        ->type_name("GLOB");
    syntax.add_option("--material", criteria.material, "Items with a material named like GLOB")
        ->type_name("GLOB");
    const auto many = [&syntax](const char* name, std::vector<std::string>& texts,
                                const char* description) {
        syntax.add_option(name, texts, description)->type_name("COND")->allow_extra_args(false);
    };
    many("--attribute", criteria.attributes,
         "Items with an attribute or property NAME, or with one for which a condition holds: NAME, "
         "one of = != < <= > >=, value");
    many("--metadata", criteria.metadata, "The same for the metadata of attributes: Locked=true");
    syntax.add_flag("--hidden", criteria.hidden, "Items set to be not shown");
    syntax
        .add_option("--min-size", criteria.minSize,
                    "Items with a box whose longest side is N or more")
        ->type_name("N");
    syntax
        .add_option("--max-size", criteria.maxSize,
                    "Items with a box whose longest side is N or less")
        ->type_name("N");
    syntax.add_flag("-i,--ignore-case", criteria.ignoresCase,
                    "Treat small and large letters alike");
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
