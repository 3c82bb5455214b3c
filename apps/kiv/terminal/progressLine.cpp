#include "terminal/progressLine.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <unistd.h>

#include "terminal/interrupts.h"
#include "terminal/terminal.h"

namespace app {

namespace {

constexpr auto kPatience = std::chrono::milliseconds(200);
constexpr auto kPace = std::chrono::milliseconds(50);
constexpr std::size_t kStride = 256; // items between two looks at the clock
constexpr std::size_t kMaxName = 40; // bytes, so that the line fits the terminal's row

/// The end of a file's name, from the start of a character on, fit for a terminal.
std::string shortened(const std::string& file)
{
    const auto text = printable(file);
    if (text.size() <= kMaxName) {
        return text;
    }
    auto start = text.size() - kMaxName;
    while (start < text.size() && (text[start] & 0xC0) == 0x80) {
        ++start;
    }
    return "..." + text.substr(start);
}

} // namespace

ProgressLine::ProgressLine(const std::string& work, std::uintmax_t size, Clock::time_point begin)
    : _work(work), _size(size), _isTerminal(isTerminal(STDERR_FILENO)), _begin(Clock::now()),
      _nextShow(begin + kPatience)
{}

ProgressLine::~ProgressLine()
{
    if (_width > 0) {
        write("");
        std::fputs("\r", stderr);
    }
}

void ProgressLine::show(float fraction)
{
    if (isDue()) {
        const auto done = std::clamp(fraction, 0.0f, 1.0f);
        write(_work + " " + std::to_string(static_cast<int>(done * 100)) + " %" +
              (_size > 0 ? rate(done * static_cast<double>(_size) / 1e6, "MB") : ""));
    }
}

void ProgressLine::count()
{
    if (++_count % kStride != 0) {
        return;
    }
    endIfInterrupted();
    if (isDue()) {
        write(_work + ": " + std::to_string(_count) +
              rate(static_cast<double>(_count) / 1e3, "thousand"));
    }
}

bool ProgressLine::isDue()
{
    if (!_isTerminal || Clock::now() < _nextShow) {
        return false;
    }
    _nextShow = Clock::now() + kPace;
    return true;
}

std::string ProgressLine::rate(double done, const char* unit) const
{
    const std::chrono::duration<double> time = Clock::now() - _begin;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), ", %.1f %s/s", done / time.count(), unit);
    return text.data();
}

/// Overwrites the line, with spaces where the old one was longer. Not through std::cerr, which is
/// silenced while an importer runs.
void ProgressLine::write(const std::string& line)
{
    const auto rest = _width > line.size() ? _width - line.size() : 0;
    std::fputs(("\r" + line + std::string(rest, ' ')).c_str(), stderr);
    _width = line.size();
}

void ReadingProgress::showNext(Kiv_v4::document::Workspace& scene)
{
    ++_next;
    const auto work =
        _nbFiles > 1 ? "reading " + std::to_string(_next) + " of " + std::to_string(_nbFiles) + ": "
                     : std::string("reading ");
    // What is read alone, as in a shell, begins when it is read.
    const auto begin = _nbFiles > 1 ? std::optional(_begin) : std::nullopt;
    const auto line = std::make_shared<std::unique_ptr<ProgressLine>>();
    scene.setProgress([line, work, begin](const std::string& file, float fraction) {
        if (fraction < 1) {
            if (!*line) {
                std::error_code none;
                const auto size = std::filesystem::file_size(file, none);
                *line = std::make_unique<ProgressLine>(work + shortened(file), none ? 0 : size,
                                                       begin.value_or(ProgressLine::Clock::now()));
            }
            (*line)->show(fraction);
        } else {
            line->reset();
        }
        endIfInterrupted();
    });
}

void showReading(Kiv_v4::document::Workspace& scene)
{
    ReadingProgress(1).showNext(scene);
}

} // namespace app
