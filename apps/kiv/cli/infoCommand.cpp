#include "cli/filling.h"
#include "cli/programCommand.h"
#include "report/fileInfo.h"
#include "terminal/diagnostics.h"
#include "terminal/progressLine.h"

namespace app {

namespace {

struct InfoOptions
{
    std::vector<std::string> files;
    std::optional<Kiv_v4::document::Isolation> isolation;
    InfoForm form = InfoForm::Text;
};

/// What cannot be read gets a complaint, and the rest is told.
int info(const InfoOptions& options, Output& output)
{
    std::vector<Json> files;
    ReadingProgress progress(options.files.size());
    const auto failed = failures(options.files, [&](const std::string& file) {
        files.push_back(fileInfo(file, options.isolation, progress));
    });
    if (!files.empty()) {
        writeInfo(files, options.form, output);
    }
    return failed == 0 ? kSuccess : kFailure;
}

} // namespace

Command defineInfo(CLI::App& program)
{
    const auto options = std::make_shared<InfoOptions>();
    auto& syntax = *program.add_subcommand("info", "Tell what is in scene files");
    syntax.footer("Of one FILE everything, its metadata included; of several a table with totals. "
                  "Lengths are in scene units, and in metres where the file tells its unit.\n"
                  "Example: kiv info --csv *.fbx > models.csv");
    syntax.add_option("FILE", options->files, "Scene files")->type_name("")->required();
    defineIsolation(syntax, options->isolation);
    auto* csv = syntax.add_flag_callback(
        "--csv", [options] { options->form = InfoForm::Csv; },
        "Print comma-separated values, the totals last");
    syntax
        .add_flag_callback(
            "--json", [options] { options->form = InfoForm::JsonText; },
            "Print a JSON object: files and totals")
        ->excludes(csv);
    return {&syntax, [options](const Context& context) { return info(*options, context.output); },
            false};
}

} // namespace app
