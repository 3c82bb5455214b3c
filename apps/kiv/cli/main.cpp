#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "kiv/host/itemLookup.h"
#include "kiv/versionInfo.h"

#include "cli/checkCommand.h"
#include "cli/findCommand.h"
#include "cli/plugins.h"
#include "cli/shellCommand.h"
#include "cli/showCommand.h"
#include "cli/treeCommand.h"
#include "terminal/diagnostics.h"
#include "terminal/output.h"

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

void defineMake(CLI::App& command, std::vector<std::string>& itemsToMake)
{
    command
        .add_option("--make", itemsToMake,
                    "Make an item in memory before files are mounted, for example\n"
                    "--make group:/world/props --make mesh:/world/props/crate")
        ->type_name("TYPE:PATH")
        ->allow_extra_args(false);
}

void defineTree(CLI::App& program, app::TreeOptions& options)
{
    auto& tree = *program.add_subcommand("tree", "Print the items of scene files as one tree");
    tree.footer("Each FILE is mounted under /world, in an item named after the file.");
    tree.add_option("FILE", options.files, "Scene files")->type_name("");
    defineMake(tree, options.itemsToMake);
    tree.add_option("--depth", options.filter.depth, "Show N levels below the root")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    tree.add_option("--type", options.filter.nodeType,
                    "Show the items of one node type alone; a drawn tree has their ancestors too")
        ->type_name("TYPE");
    using Form = app::TreeForm;
    auto* paths = tree.add_flag_callback(
        "--paths", [&options] { options.form = Form::Paths; }, "Print one path per line");
    tree.add_flag_callback(
            "--json", [&options] { options.form = Form::JsonText; },
            "Print a JSON array of items, parents before children")
        ->excludes(paths);
}

void defineShow(CLI::App& program, app::ShowOptions& options)
{
    auto& show = *program.add_subcommand("show", "Print all that one item offers");
    show.footer(
        "Angles are in degrees, apertures and focal lengths in millimetres, other lengths in\n"
        "scene units, colors linear; matrices are for row vectors, with the translation in\n"
        "the last row. The world matrix takes every gateway above the item; there is none\n"
        "when one of them has no transform. JSON has null for what is no finite number.");
    show.add_option("FILE", options.file, "Scene file; not for an item of a plug-in")
        ->type_name("")
        ->required();
    show.add_option("PATH", options.path,
                    "The item's path as printed by kiv tree --paths, or the part of it that lies\n"
                    "in the file, such as :root:node or root:node")
        ->type_name("");
    defineMake(show, options.itemsToMake);
    show.add_flag("--json", options.json, "Print a JSON object");
}

void defineFind(CLI::App& program, app::FindOptions& options)
{
    auto& find = *program.add_subcommand("find", "Print the items that meet all given criteria");
    find.footer("Each FILE is mounted under /world, in an item named after the file. Prints node\n"
                "type, run-time and path of each item. The exit status is 0 when there is one, 1\n"
                "when there is none or something could not be made or read, 2 for wrong usage.");
    find.add_option("FILE", options.files, "Scene files")->type_name("");
    defineMake(find, options.itemsToMake);
    find.add_flag("--cameras", options.criteria.cameras, "Cameras");
    find.add_flag("--lights", options.criteria.lights, "Lights");
    find.add_option("--type", options.criteria.nodeType, "Items of one node type")
        ->type_name("TYPE");
    find.add_option("--name", options.criteria.name,
                    "Items with a name like GLOB, in which * stands for any text, ? for any\n"
                    "character and [...] for one of several")
        ->type_name("GLOB");
    using Form = app::FindForm;
    auto* paths = find.add_flag_callback(
        "--paths", [&options] { options.form = Form::Paths; }, "Print one path per line");
    find.add_flag_callback(
            "--json", [&options] { options.form = Form::JsonText; }, "Print a JSON array of items")
        ->excludes(paths);
}

void defineShell(CLI::App& program, app::shell::ShellOptions& options)
{
    auto& shell = *program.add_subcommand("shell", "Browse and edit a scene by commands");
    shell.footer(
        "Each FILE is mounted under /world, in an item named after the file. Commands come\n"
        "from -c, from the terminal, or from the standard input as a script: then the\n"
        "first error ends it with exit status 1. The command help lists the commands.");
    shell.add_option("FILE", options.files, "Scene files")->type_name("");
    shell
        .add_option("-c", options.commands,
                    "Run these commands, separated by ; or newlines, and leave")
        ->type_name("COMMANDS");
    shell.add_flag("--keep-going", options.style.keepsGoing,
                   "After an error in a script, go on with the next line");
    shell.add_flag("--echo", options.style.echoes, "Print each line of a script before it runs");
}

void defineCheck(CLI::App& program, app::CheckOptions& check)
{
    auto& command = *program.add_subcommand("check", "Hold a run-time against the contracts");
    command.footer(
        "Checks a plug-in, or assimp with a SCENE file, in processes of its own. The exit\n"
        "status is 0 when no contract is broken, 1 when one is, 2 for wrong usage.");
    command.add_option("PLUGIN", check.candidate, "Plug-in file, or assimp")
        ->type_name("")
        ->required();
    command.add_option("SCENE", check.scene, "Scene file for assimp")->type_name("");
    command.add_option("--seed", check.options.seed, "What the random edits follow from")
        ->type_name("N");
    command.add_option("--steps", check.options.nbSteps, "How many edits a sequence holds")
        ->type_name("N");
    command
        .add_option("--only", check.options.only,
                    "Contracts, or the beginnings of their names: --only commands,news")
        ->type_name("NAMES")
        ->delimiter(',');
    command.add_flag("--diagnostics", check.options.showDiagnostics,
                     "Let the run-time write to the standard error stream");
    using Form = app::ReportForm;
    auto* json = command.add_flag_callback(
        "--json", [&check] { check.form = Form::Json; }, "Print a JSON object");
    command
        .add_flag_callback(
            "--junit", [&check] { check.form = Form::Junit; }, "Print JUnit's XML")
        ->excludes(json);
}

int wrongUsage(const std::string& message)
{
    app::complain(message.substr(0, message.find('\n')) + " (kiv --help tells more)");
    return app::kWrongUsage;
}

/// What to say of a first argument that is neither a command nor an option; empty for others.
std::string commandTrouble(const CLI::App& program, const std::string& word)
{
    std::vector<std::string> names;
    for (const auto* command : program.get_subcommands({})) {
        names.push_back(command->get_name());
    }
    if (word.starts_with('-') || std::ranges::find(names, word) != names.end()) {
        return {};
    }
    const auto meant = Kiv_v4::host::suggestion(word, names);
    std::error_code none;
    if (meant.empty() &&
        (std::filesystem::exists(word, none) || std::filesystem::path(word).has_extension())) {
        return "'" + word + "' is a file, not a command; did you mean 'kiv tree " + word + "'?";
    }
    return "unknown command '" + word + "'" + meant;
}

/// What the user asked for, and the plug-ins, which outlive all that is known of their items.
struct Wishes
{
    app::Plugins plugins;
    std::vector<std::string> pluginFiles;
    app::TreeOptions tree;
    app::ShowOptions show;
    app::FindOptions find;
    app::shell::ShellOptions shell;
    app::CheckOptions check;
};

void define(CLI::App& program, Wishes& wishes)
{
    program
        .add_option("--plugin", wishes.pluginFiles,
                    "Load a plug-in first; those that KIV_PLUGIN_PATH names are loaded anyway")
        ->type_name("FILE")
        ->allow_extra_args(false);
    program.fallthrough();
    defineTree(program, wishes.tree);
    defineShow(program, wishes.show);
    defineFind(program, wishes.find);
    defineShell(program, wishes.shell);
    defineCheck(program, wishes.check);
    program.add_subcommand("plugins", "List the plug-ins: name, interface, run-times, file");
}

/// Does what was asked for with the plug-ins loaded.
int runWithPlugins(const CLI::App& program, Wishes& wishes, Output& output)
{
    auto& [plugins, files, tree, show, find, shell, check] = wishes;
    if (program.got_subcommand("plugins")) {
        return pluginsCommand(plugins, output);
    }
    if (program.got_subcommand("show")) {
        if (program.get_subcommand("show")->count("PATH") == 0) {
            if (plugins.all().empty()) {
                return wrongUsage("PATH is required");
            }
            show.file.swap(show.path); // an item of a plug-in
        }
        return showCommand(show, output);
    }
    if (program.got_subcommand("find")) {
        find.topItems = plugins.topItems();
        if (find.files.empty() && find.topItems.empty()) {
            return wrongUsage("FILE is required");
        }
        return find.criteria.any()
                   ? findCommand(find, output)
                   : wrongUsage("--cameras, --lights, --type or --name is required");
    }
    if (program.got_subcommand("shell")) {
        return shellCommand(shell, output);
    }
    tree.topItems = plugins.topItems();
    if (tree.files.empty() && tree.itemsToMake.empty() && tree.topItems.empty()) {
        return wrongUsage("FILE is required");
    }
    return treeCommand(tree, output);
}

int run(int argc, char** argv, Output& output)
{
    CLI::App program("Looks into scene files.", "kiv");
    program.require_subcommand(1);
    program.set_version_flag("--version", version);
    Wishes wishes;
    define(program, wishes);
    if (const auto trouble = argc > 1 ? commandTrouble(program, argv[1]) : ""; !trouble.empty()) {
        return wrongUsage(trouble);
    }
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
    if (program.got_subcommand("check")) {
        return checkCommand(wishes.check, output);
    }
    const auto nbRefused = wishes.plugins.load(wishes.pluginFiles);
    const auto status = runWithPlugins(program, wishes, output);
    return nbRefused > 0 && status == app::kSuccess ? app::kFailure : status;
}

} // namespace

int main(int argc, char** argv)
{
    std::setlocale(LC_CTYPE, "C.UTF-8"); // so that patterns take characters for bytes of names
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
