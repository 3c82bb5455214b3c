#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "kiv/document/workspace.h"

namespace app {

/// A line on the standard error stream that tells how far a long piece of work has come. It shows
/// up only on a terminal and only once the work has taken a while; the destructor wipes it away.
class ProgressLine
{
public:
    using Clock = std::chrono::steady_clock;

    /// `size` is the work in bytes, or 0 for work that is counted. Work that is a part of longer
    /// work has taken as long as that, since `begin`.
    explicit ProgressLine(const std::string& work, std::uintmax_t size = 0,
                          Clock::time_point begin = Clock::now());
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    /// Shows a fraction from 0 to 1. Cheap to call often.
    void show(float fraction);

    /// One item more is done: shows their number. Throws `document::Cancelled` when an interrupt
    /// came. Cheap to call often.
    void count();

    /// A function that does so, while this lives.
    [[nodiscard]] std::function<void()> counter()
    {
        return [this] { count(); };
    }

private:
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

/// Shows progress lines for the reading of scene files, one after the other, which tell how many of
/// them are done; an interrupt from the keyboard ends it.
class ReadingProgress
{
public:
    explicit ReadingProgress(std::size_t nbFiles) : _nbFiles(nbFiles) {}

    /// From now on the workspace reads the next of the files.
    void showNext(Kiv_v4::document::Workspace& scene);

private:
    const std::size_t _nbFiles;
    std::size_t _next = 0;
    const ProgressLine::Clock::time_point _begin = ProgressLine::Clock::now();
};

/// From now on a progress line shows while the workspace reads a scene file, and an interrupt from
/// the keyboard ends that.
void showReading(Kiv_v4::document::Workspace& scene);

} // namespace app
