#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "shell/engine/session.h"

namespace app::shell {

/// What the last word of a line may become.
struct Completion
{
    struct Candidate
    {
        std::string word; ///< Not quoted.
        bool isWhole;     ///< False when more of the word may follow, as behind a folder.
    };

    std::size_t begin = 0;             ///< Where the word begins in the line.
    std::string word;                  ///< The word as it is.
    std::vector<Candidate> candidates; ///< In order, each beginning with `word`.

    /// What all candidates begin with, in whole characters if they are UTF-8; `word` when there
    /// are none.
    [[nodiscard]] std::string commonPart() const;
};

/// The candidates for the end of `line`: commands, and what the usage of the command says is due.
/// Never throws but for want of memory.
[[nodiscard]] Completion completionOf(Session& session, std::string_view line);

} // namespace app::shell
