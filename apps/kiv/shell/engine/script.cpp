#include "shell/engine/script.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "kiv/host/errorPrefix.h"

#include "shell/engine/commandTable.h"
#include "terminal/diagnostics.h"
#include "terminal/interrupts.h"
#include "terminal/terminal.h"

namespace app::shell {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Remembers a script that runs, for as long as it does. One that would run itself would never end,
/// since there are no conditions.
class Running
{
public:
    Running(Session& session, const std::string& file) : _scripts(session.scripts)
    {
        auto script = std::filesystem::weakly_canonical(file);
        if (std::ranges::find(_scripts, script) != _scripts.end()) {
            throw std::runtime_error(file + ": is running already");
        }
        _scripts.push_back(std::move(script));
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { _scripts.pop_back(); }

private:
    std::vector<std::filesystem::path>& _scripts;
};

/// Drops what editors of other systems put around a line.
std::string_view plainLine(std::string_view line, bool isFirst)
{
    if (isFirst && line.starts_with(kByteOrderMark)) {
        line.remove_prefix(kByteOrderMark.size());
    }
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

void echo(const Session& session, std::string_view line)
{
    if (line.find_first_not_of(" \t") != std::string_view::npos) {
        session.output().line("> " + printable(line));
    }
}

} // namespace

void runLine(Session& session, std::string_view line)
{
    for (const auto& words : commandsOf(line)) {
        if (!session.isOver()) {
            runCommand(session, words);
        }
    }
}

bool runLines(Session& session, std::istream& lines, const ScriptStyle& style)
{
    auto isFaultless = true;
    std::size_t number = 0;
    for (std::string text; !session.isOver() && std::getline(lines, text);) {
        const auto line = plainLine(text, ++number == 1);
        if (style.echoes) {
            echo(session, line);
        }
        try {
            Kiv_v4::host::prefixed("line " + std::to_string(number),
                                   [&] { runLine(session, line); });
        } catch (const std::runtime_error& error) {
            if (!style.keepsGoing || Interrupts::hasCome()) {
                throw;
            }
            report(session, error.what());
            isFaultless = false;
        }
    }
    endIfInterrupted(); // which also ends the reading of lines
    return isFaultless;
}

void runFile(Session& session, const std::string& file)
{
    const Running running(session, file);
    std::ifstream lines(file, std::ios::binary);
    if (!lines || std::filesystem::is_directory(file)) {
        throw std::runtime_error(file + ": cannot be read");
    }
    Kiv_v4::host::prefixed(file, [&] { return runLines(session, lines); });
}

void report(const Session& session, const std::string& error)
{
    session.output().flush();
    complain(error);
}

} // namespace app::shell
