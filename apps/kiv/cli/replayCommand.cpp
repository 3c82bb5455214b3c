#include <fstream>

#include "kiv/host/errorPrefix.h"
#include "kiv/host/recorder.h"

#include "cli/filling.h"
#include "cli/programCommand.h"
#include "shell/engine/script.h"
#include "terminal/diagnostics.h"
#include "terminal/interrupts.h"

namespace app {

using namespace Kiv_v4;

namespace {

struct ReplayOptions
{
    SceneWishes scene;
    std::string recording;
};

std::string lineOf(const std::optional<host::Record>& record)
{
    return record ? record->kind + ": " + record->text : "nothing";
}

int replay(const ReplayOptions& options, const Context& context)
{
    auto& output = context.output;
    std::ifstream file(options.recording);
    if (!file) {
        complain(options.recording, "cannot be read");
        return kFailure;
    }
    const auto records = host::prefixed(options.recording, [&] { return host::readRecords(file); });
    shell::Session session(output);
    if (fill(session.scene(), options.scene, context.plugins) > 0) {
        return kFailure;
    }
    const auto found = host::replay(
        records, [&session](const std::string& line) { shell::runLine(session, line); },
        session.scene().root(), session.sharedHistory());
    endIfInterrupted(); // which the replay takes for an error like others
    for (const auto& [input, recorded, now] : found) {
        output.line(std::to_string(input.id) + " " + lineOf(input));
        output.line("  recorded  " + lineOf(recorded));
        output.line("  now       " + lineOf(now));
    }
    output.line(found.empty() ? "no differences"
                              : std::to_string(found.size()) +
                                    (found.size() == 1 ? " difference" : " differences"));
    return found.empty() ? kSuccess : kFailure;
}

} // namespace

Command defineReplay(CLI::App& program)
{
    const auto options = std::make_shared<ReplayOptions>();
    auto& syntax = *program.add_subcommand("replay", "Do again what was recorded in a shell");
    syntax.footer(
        "Runs the commands of a recording, made by the shell's command watch --record, over "
        "the same scene, and tells where something else happens than was recorded. The "
        "exit status is 0 when nothing does.\n"
        "Example: kiv shell a.gltf -c 'watch --record=r; rm a'; kiv replay r a.gltf");
    syntax.add_option("RECORDING", options->recording, "File with lines of JSON")
        ->type_name("")
        ->required();
    defineScene(syntax, options->scene);
    return {&syntax, [options](const Context& context) { return replay(*options, context); }};
}

} // namespace app
