#include "kiv/document/workspace.h"
#include "kiv/hierarchy.h"

#include "cli/filling.h"
#include "cli/programCommand.h"
#include "cli/usageTrouble.h"
#include "report/differenceReport.h"
#include "terminal/diagnostics.h"
#include "terminal/progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

constexpr int kTrouble = 2; ///< The exit status of programs that compare.

struct DiffOptions
{
    std::string before;
    std::string after;
    std::optional<document::Isolation> isolation;
    host::ComparisonOptions comparison{1e-6};
    bool facts = false;
    bool structure = false;
    bool json = false;
};

SceneItem::Ptr rootUnder(const Path& gateway)
{
    return Hierarchy::hierarchy(Hierarchy::createItem(gateway))->children().front();
}

/// The item that the file's materials lie under, which is no child of the gateway; null for none.
SceneItem::Ptr materialsUnder(const document::Workspace& scene, const Path& gateway)
{
    const auto item = scene.item("materials", gateway);
    return item && item->nodeType() == "materials" ? item : nullptr;
}

/// What two items differ in, when one of them may be missing.
std::vector<host::Difference> compareIfAny(const SceneItem::Ptr& before,
                                           const SceneItem::Ptr& after,
                                           const host::ComparisonOptions& options)
{
    using Kind = host::Difference::Kind;
    if (before && after) {
        return host::compare(before, after, options);
    }
    if (before) {
        return {{Kind::Removed, before->path(), {}}};
    }
    return after ? std::vector<host::Difference>{{Kind::Added, {}, after->path()}}
                 : std::vector<host::Difference>();
}

int diff(const DiffOptions& options, Output& output)
{
    document::Workspace scene;
    showReading(scene);
    scene.setIsolation(options.isolation);
    std::vector<Path> gateways;
    const auto failed = failures({options.before, options.after}, [&](const std::string& file) {
        gateways.push_back(scene.mount(file));
    });
    if (failed > 0) {
        return kTrouble;
    }
    auto comparison = options.comparison;
    comparison.values = !options.structure;
    ProgressLine progress("comparing items");
    comparison.onVisit = progress.counter();
    comparison.counts = [&options](const std::string& group, const std::string& name) {
        return options.facts || group != host::kAttribute || !name.starts_with("file.");
    };
    auto differences = host::compare(rootUnder(gateways[0]), rootUnder(gateways[1]), comparison);
    const auto ofMaterials = compareIfAny(materialsUnder(scene, gateways[0]),
                                          materialsUnder(scene, gateways[1]), comparison);
    differences.insert(differences.end(), ofMaterials.begin(), ofMaterials.end());
    writeDifferences(differences, gateways[0], gateways[1], options.json, output);
    return differences.empty() ? kSuccess : kFailure;
}

} // namespace

Command defineDiff(CLI::App& program)
{
    const auto options = std::make_shared<DiffOptions>();
    auto& syntax = *program.add_subcommand("diff", "Tell what differs between two scene files");
    syntax.footer(
        "Tells which items were added, removed, moved, renamed or put in another order, and "
        "which values of transforms, cameras, lights, visibility, attributes and materials "
        "changed. The exit status is 0 when nothing differs, 1 when something does, 2 for an "
        "error.\n"
        "Example: kiv diff --tolerance 0.001 old.gltf new.gltf");
    syntax.add_option("BEFORE", options->before, "Scene file")->type_name("")->required();
    syntax.add_option("AFTER", options->after, "Scene file")->type_name("")->required();
    syntax
        .add_option("--tolerance", options->comparison.tolerance,
                    "Numbers are equal if they differ by no more than N, or by that share of the "
                    "larger one; by default 0.000001")
        ->type_name("N")
        ->check(notNegative());
    syntax.add_flag("--structure", options->structure, "Compare no values");
    syntax.add_flag("--facts", options->facts,
                    "Compare what the files tell of themselves, too, such as their dates");
    defineIsolation(syntax, options->isolation);
    syntax.add_flag("--json", options->json, "Print a JSON array");
    return {&syntax, [options](const Context& context) { return diff(*options, context.output); }};
}

} // namespace app
