#include <CLI/CLI.hpp>
#include <exception>
#include <string>

#include "kiv/versionInfo.h"

#include "diagnostics.h"
#include "output.h"
#include "showCommand.h"
#include "treeCommand.h"

namespace {

using app::Output;

std::string version()
{
    using Kiv_v4::VersionInfo;
    const auto number = [](int part) { return std::to_string(part); };
    return "kiv " + number(VersionInfo::getMajorVersion()) + "." +
           number(VersionInfo::getMinorVersion()) + "." + number(VersionInfo::getPatchLevel()) +
           " (" + VersionInfo::getBuildDate() + ", build " + number(VersionInfo::getBuildNumber()) +
           ", commit " + VersionInfo::getGitCommit() + ", branch " + VersionInfo::getGitBranch() +
           ")";
}

void defineTree(CLI::App& program, app::TreeOptions& options)
{
    auto& tree = *program.add_subcommand("tree", "Print the items of scene files as one tree");
    tree.footer("Each FILE is mounted under /world, in an item named after the file.");
    tree.add_option("FILE", options.files, "Scene files")->type_name("");
    tree.add_option("--make", options.itemsToMake,
                    "Make an item in memory before the files are mounted, for example\n"
                    "--make group:/world/props --make mesh:/world/props/crate")
        ->type_name("TYPE:PATH")
        ->allow_extra_args(false);
    tree.add_option("--depth", options.filter.depth, "Show N levels below the root")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    tree.add_option("--type", options.filter.nodeType,
                    "Show the items of one node type alone; a drawn tree has their ancestors too")
        ->type_name("TYPE");
    using Form = app::TreeOptions::Form;
    auto* paths = tree.add_flag_callback(
        "--paths", [&options] { options.form = Form::paths; }, "Print one path per line");
    tree.add_flag_callback(
            "--json", [&options] { options.form = Form::json; },
            "Print a JSON array of items, parents before children")
        ->excludes(paths);
}

void defineShow(CLI::App& program, app::ShowOptions& options)
{
    auto& show = *program.add_subcommand("show", "Print what is known of one item");
    show.add_option("FILE", options.file, "Scene file")->type_name("")->required();
    show.add_option("PATH", options.path,
                    "The item's path as printed by kiv tree --paths, or the part of it that lies\n"
                    "in the file, such as :root:node or root:node")
        ->type_name("")
        ->required();
    show.add_flag("--json", options.json, "Print a JSON object");
}

int wrongUsage(const std::string& message)
{
    app::complain(message.substr(0, message.find('\n')) + " (kiv --help tells more)");
    return app::kWrongUsage;
}

int run(int argc, char** argv, Output& output)
{
    CLI::App program("Looks into scene files.", "kiv");
    program.require_subcommand(1);
    program.set_version_flag("--version", version);
    app::TreeOptions tree;
    app::ShowOptions show;
    defineTree(program, tree);
    defineShow(program, show);
    try {
        program.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        output.write(program.help());
        return app::kSuccess;
    } catch (const CLI::CallForVersion&) {
        output.line(version());
        return app::kSuccess;
    } catch (const CLI::ParseError& error) {
        return wrongUsage(error.what());
    }
    if (program.got_subcommand("show")) {
        return showCommand(show, output);
    }
    if (tree.files.empty() && tree.itemsToMake.empty()) {
        return wrongUsage("FILE is required");
    }
    return treeCommand(tree, output);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        Output output;
        const auto status = run(argc, argv, output);
        output.flush();
        return status;
    } catch (const std::exception& error) {
        app::complain(error.what());
    } catch (...) {
        app::complain("unknown error");
    }
    return app::kFailure;
}
