#include "script.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "command.h"
#include "diagnostics.h"
#include "terminal.h"

namespace app::shell {

namespace {

constexpr std::size_t kMaxScriptDepth = 32;

/// Counts a script that runs, for as long as it does.
class Running
{
public:
    explicit Running(Session& session) : _session(session)
    {
        if (_session.scriptDepth >= kMaxScriptDepth) {
            throw std::runtime_error("scripts run each other more than " +
                                     std::to_string(kMaxScriptDepth) + " deep");
        }
        ++_session.scriptDepth;
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { --_session.scriptDepth; }

private:
    Session& _session;
};

void echo(const Session& session, const std::string& line)
{
    if (line.find_first_not_of(" \t\r") != std::string::npos) {
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
    for (std::string line; !session.isOver() && std::getline(lines, line);) {
        ++number;
        if (style.echoes) {
            echo(session, line);
        }
        try {
            runLine(session, line);
        } catch (const std::exception& error) {
            const auto reason = "line " + std::to_string(number) + ": " + error.what();
            if (!style.keepsGoing) {
                throw std::runtime_error(reason);
            }
            report(session, reason);
            isFaultless = false;
        }
    }
    return isFaultless;
}

void runFile(Session& session, const std::string& file)
{
    const Running running(session);
    std::ifstream lines(file, std::ios::binary);
    if (!lines || std::filesystem::is_directory(file)) {
        throw std::runtime_error(file + ": cannot be read");
    }
    try {
        runLines(session, lines);
    } catch (const std::exception& error) {
        throw std::runtime_error(file + ": " + error.what());
    }
}

void report(const Session& session, const std::string& error)
{
    session.output().flush();
    complain(error);
}

} // namespace app::shell
