#include "terminal/progressLine.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <unistd.h>

#include "terminal/interrupts.h"
#include "terminal/terminal.h"

namespace app {

namespace {

constexpr auto kPatience = std::chrono::milliseconds(200);
constexpr auto kPace = std::chrono::milliseconds(50);
constexpr std::size_t kMaxWork = 60; // bytes, so that the line fits the terminal's row

/// The end of `text`, from the start of a character on.
std::string shortened(const std::string& text)
{
    if (text.size() <= kMaxWork) {
        return text;
    }
    auto start = text.size() - kMaxWork;
    while (start < text.size() && (text[start] & 0xC0) == 0x80) {
        ++start;
    }
    return "..." + text.substr(start);
}

} // namespace

ProgressLine::ProgressLine(const std::string& work)
    : _work(shortened(printable(work))), _isTerminal(isTerminal(STDERR_FILENO)),
      _nextShow(Clock::now() + kPatience)
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
    if (!_isTerminal || Clock::now() < _nextShow) {
        return;
    }
    _nextShow = Clock::now() + kPace;
    const auto percent = static_cast<int>(std::clamp(fraction, 0.0f, 1.0f) * 100);
    write(_work + " " + std::to_string(percent) + " %");
}

/// Overwrites the line, with spaces where the old one was longer. Not through std::cerr, which is
/// silenced while an importer runs.
void ProgressLine::write(const std::string& line)
{
    const auto rest = _width > line.size() ? _width - line.size() : 0;
    std::fputs(("\r" + line + std::string(rest, ' ')).c_str(), stderr);
    _width = line.size();
}

void showReading(Kiv_v4::document::Workspace& scene)
{
    const auto line = std::make_shared<std::unique_ptr<ProgressLine>>();
    scene.setProgress([line](const std::string& file, float fraction) {
        if (fraction < 1) {
            if (!*line) {
                *line = std::make_unique<ProgressLine>("reading " + file);
            }
            (*line)->show(fraction);
        } else {
            line->reset();
        }
        endIfInterrupted();
    });
}

} // namespace app
