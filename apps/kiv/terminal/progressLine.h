#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "kiv/document/workspace.h"

namespace app {

/// A line on the standard error stream that tells how far a long piece of work has come. It shows
/// up only on a terminal and only once the work has taken a while; the destructor wipes it away.
class ProgressLine
{
public:
    /// `size` is the work in bytes, or 0 for work that is counted.
    explicit ProgressLine(const std::string& work, std::uintmax_t size = 0);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    /// Shows a fraction from 0 to 1. Cheap to call often.
    void show(float fraction);

    /// One item more is done: shows their number. Throws `document::Cancelled` when an interrupt
    /// came. Cheap to call often.
    void count();

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool isDue();
    [[nodiscard]] std::string rate(double done, const char* unit) const;
    void write(const std::string& line);

    const std::string _work;
    const std::uintmax_t _size;
    std::size_t _count = 0;
    const bool _isTerminal;
    const Clock::time_point _begin;
    Clock::time_point _nextShow;
    std::size_t _width = 0; ///< Of the line that is on the terminal now.
};

/// From now on a progress line shows while the workspace reads a scene file, and an interrupt from
/// the keyboard ends that.
void showReading(Kiv_v4::document::Workspace& scene);

} // namespace app
