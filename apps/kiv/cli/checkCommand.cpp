#include "cli/checkCommand.h"

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "kiv/conformance/failingAllocations.h"
#include "kiv/document/workspace.h"
#include "kiv/hierarchy.h"

#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// The items of a scene file, mounted in a scene of their own.
conformance::Candidate sceneFile(const std::string& file)
{
    return {file, [file] {
                const auto scene = std::make_shared<document::Workspace>();
                const auto gateway = scene->mount(file);
                conformance::Running running{scene, {}};
                const auto hierarchy = Hierarchy::hierarchy(Hierarchy::createItem(gateway));
                for (const auto& top : hierarchy->children()) {
                    running.roots.push_back(top->path());
                }
                return running;
            }};
}

} // namespace

int checkCommand(const CheckOptions& options, Output& output)
{
    const auto isOwn = options.candidate == "assimp";
    if (isOwn == options.scene.empty()) {
        complain(options.candidate, isOwn ? "SCENE is required" : "a plug-in brings its own scene");
        return kWrongUsage;
    }
    const auto& file = isOwn ? options.scene : options.candidate;
    if (std::error_code none; !std::filesystem::exists(file, none)) {
        complain(file, "no such file");
        return kFailure;
    }
    output.flush(); // what is held back would be written by each child process
    auto how = options.options;
    how.allocationFaults = conformance::failingAllocations();
    const auto report =
        conformance::check(isOwn ? sceneFile(file) : conformance::pluginCandidate(file), how);
    output.write(options.form == ReportForm::Json    ? conformance::json(report)
                 : options.form == ReportForm::Junit ? conformance::junit(report)
                                                     : conformance::text(report));
    return report.passed() ? kSuccess : kFailure;
}

} // namespace app
