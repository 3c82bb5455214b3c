#include <filesystem>
#include <memory>
#include <stdexcept>
#include <utility>

#include "kiv/conformance/conformance.h"
#include "kiv/document/workspace.h"
#include "kiv/hierarchy.h"
#include "kiv/host/itemLookup.h"

#include "cli/commandLine.h"
#include "cli/programCommand.h"
#include "terminal/diagnostics.h"
#include "terminal/interrupts.h"

namespace app {

using namespace Kiv_v4;

namespace {

enum class ReportForm { Text, Json, Junit };

struct CheckOptions
{
    std::string candidate; ///< A plug-in file or `assimp`; empty for a run-time in Python.
    std::string scene;     ///< The file for `assimp` to show.
    conformance::Options options;
    ReportForm form = ReportForm::Text;
};

/// The items of a scene file, mounted in a scene of their own.
conformance::Running mounted(const std::string& file)
{
    const auto scene = std::make_shared<document::Workspace>();
    const auto gateway = scene->mount(file);
    conformance::Running running{scene, {}};
    for (const auto& top : Hierarchy::hierarchy(Hierarchy::createItem(gateway))->children()) {
        running.roots.push_back(top->path());
    }
    return running;
}

/// What is wrong with the beginning of a contract's name; empty for nothing.
std::string contractTrouble(const std::string& beginning)
{
    std::vector<std::string> families;
    for (const auto& contract : conformance::contracts()) {
        if (contract.id.starts_with(beginning)) {
            return {};
        }
        families.push_back(contract.id.substr(0, contract.id.find('.')));
    }
    return "no such contract '" + beginning + "'" + host::suggestion(beginning, families);
}

/// A plug-in, or a scene file for the program's own run-time. Throws `std::runtime_error` for a
/// file that is not there.
conformance::Candidate fileCandidate(const CheckOptions& options)
{
    const auto isOwn = options.candidate == "assimp";
    if (isOwn == options.scene.empty()) {
        throw WrongUsage(options.candidate +
                         (isOwn ? ": SCENE is required" : ": a plug-in brings its own scene"));
    }
    const auto& file = isOwn ? options.scene : options.candidate;
    if (std::error_code none; !std::filesystem::exists(file, none)) {
        throw std::runtime_error(file + ": no such file");
    }
    if (isOwn) {
        return {file, [file] { return mounted(file); }};
    }
    return conformance::pluginCandidate(file);
}

/// A run-time in Python, with the items of a scene file that it reads when one is named.
conformance::Candidate pythonCandidate(const std::string& source, const std::string& file,
                                       const Surroundings& python)
{
    const auto& open = python.openInPython;
    if (file.empty()) {
        return {source, [open, source] { return open(source); }};
    }
    return {source, [open, source, file] {
                using Held = std::shared_ptr<void>;
                const auto runTime = open(source).runTime;
                auto running = mounted(file);
                running.runTime = std::make_shared<std::pair<Held, Held>>(runTime, running.runTime);
                return running;
            }};
}

/// In Python, whatever is no plug-in is a source for Python.
conformance::Candidate candidateOf(const CheckOptions& options, const Context& context)
{
    const auto& sources = context.pythonSources;
    const auto& file = options.candidate;
    if (sources.size() > 1 || (!sources.empty() && !options.scene.empty())) {
        throw WrongUsage("one run-time at a time, with one file");
    }
    if (!sources.empty()) {
        return pythonCandidate(sources.front(), file, context.surroundings);
    }
    if (file.empty()) {
        throw WrongUsage("PLUGIN is required");
    }
    if (context.surroundings.openInPython && file != "assimp" && !file.ends_with(".so")) {
        return pythonCandidate(file, options.scene, context.surroundings);
    }
    return fileCandidate(options);
}

int check(const CheckOptions& options, const Context& context)
{
    const auto candidate = candidateOf(options, context);
    context.output.flush(); // what is held back would be written by each child process
    Interrupts::endProgram();
    auto how = options.options;
    how.allocationFaults = context.surroundings.allocationFaults;
    const auto report = conformance::check(candidate, how);
    context.output.write(options.form == ReportForm::Json    ? conformance::json(report)
                         : options.form == ReportForm::Junit ? conformance::junit(report)
                                                             : conformance::text(report));
    return report.passed() ? kSuccess : kFailure;
}

} // namespace

Command defineCheck(CLI::App& program)
{
    const auto wishes = std::make_shared<CheckOptions>();
    auto& syntax = *program.add_subcommand("check", "Hold a run-time against the contracts");
    syntax.footer(
        "Checks a plug-in, or assimp with a SCENE file, in processes of its own. The exit "
        "status is 0 when no contract is broken, 1 when one is, 2 for wrong usage.\n"
        "Example: kiv check --only commands props.so");
    syntax
        .add_option("PLUGIN", wishes->candidate,
                    "Plug-in file, or assimp; with --python, a file that the run-time reads")
        ->type_name("");
    syntax.add_option("SCENE", wishes->scene, "Scene file for assimp")->type_name("");
    auto& options = wishes->options;
    syntax.add_option("--seed", options.seed, "The seed of the random edits")->type_name("N");
    syntax.add_option("--steps", options.nbSteps, "The number of edits in a sequence")
        ->type_name("N");
    syntax
        .add_option("--only", options.only,
                    "Contracts, or the beginnings of their names: --only commands,notifications")
        ->type_name("NAMES")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(contractTrouble, "");
    syntax.add_flag("--diagnostics", options.showDiagnostics,
                    "Let the run-time write to the standard error stream");
    auto* json = syntax.add_flag_callback(
        "--json", [wishes] { wishes->form = ReportForm::Json; }, "Print a JSON object");
    syntax
        .add_flag_callback(
            "--junit", [wishes] { wishes->form = ReportForm::Junit; }, "Print JUnit's XML")
        ->excludes(json);
    return {&syntax, [wishes](const Context& context) { return check(*wishes, context); }, false};
}

} // namespace app
