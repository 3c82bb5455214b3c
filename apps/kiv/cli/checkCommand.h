#pragma once

#include <string>

#include "kiv/conformance/conformance.h"

#include "terminal/output.h"

namespace app {

enum class ReportForm { Text, Json, Junit };

/// `kiv check`: what the user asked for.
struct CheckOptions
{
    std::string candidate; ///< A plug-in file, or `assimp`.
    std::string scene;     ///< The file for `assimp` to show.
    Kiv_v4::conformance::Options options;
    ReportForm form = ReportForm::Text;
};

/// Holds the run-time against the contracts and writes the report. Gives the exit status.
[[nodiscard]] int checkCommand(const CheckOptions& options, Output& output);

} // namespace app
