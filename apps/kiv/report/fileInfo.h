#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kiv/document/isolation.h"

#include "report/reportSection.h"
#include "terminal/output.h"
#include "terminal/progressLine.h"

namespace app {

enum class InfoForm { Text, JsonText, Csv };

/// Reads a scene file and returns what there is to tell of it and of the tree of its items: an
/// object of numbers and texts, with the lengths of animations, the files of textures, the items by
/// type and the metadata inside it. Throws `std::runtime_error` when it cannot be read.
[[nodiscard]] Json fileInfo(const std::string& file,
                            const std::optional<Kiv_v4::document::Isolation>& isolation,
                            ReadingProgress& progress);

/// Writes what is told of files: of one as a list, of several as a table with totals.
void writeInfo(const std::vector<Json>& files, InfoForm form, Output& output);

} // namespace app
