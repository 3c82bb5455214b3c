#include "shell/engine/commandTable.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/host/itemLookup.h"

#include "terminal/interrupts.h"

namespace app::shell {

std::span<const CommandKind> commandKinds()
{
    static const CommandKind kinds[] = {browsing(),         files(),   structure(),
                                        selecting(),        placing(), camerasAndLights(),
                                        attributeEditing(), undoing(), general()};
    return kinds;
}

const Command* commandNamed(std::string_view name)
{
    for (const auto& kind : commandKinds()) {
        for (const auto& command : kind.commands) {
            if (command.name == name) {
                return &command;
            }
        }
    }
    return nullptr;
}

std::string unknownCommand(const std::string& name)
{
    std::vector<std::string> names;
    for (const auto& kind : commandKinds()) {
        for (const auto& command : kind.commands) {
            names.emplace_back(command.name);
        }
    }
    const auto meant = Kiv_v4::host::suggestion(name, names);
    return "unknown command '" + name + "'" + (meant.empty() ? " (help lists them)" : meant);
}

namespace {

void runPlainly(Session& session, const Words& words)
{
    const auto* const command = commandNamed(words.front());
    if (!command) {
        throw std::runtime_error(unknownCommand(words.front()));
    }
    const Usage usage(command->usage);
    const auto arguments = [&] {
        try {
            return Arguments(usage, {words.begin() + 1, words.end()});
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(std::string(error.what()) +
                                     "; usage: " + std::string(command->name) + " " +
                                     std::string(command->usage));
        }
    }();
    command->run(session, arguments);
}

std::string lineOf(const Words& words)
{
    std::string line;
    for (const auto& word : words) {
        line += (line.empty() ? "" : " ") + escaped(word);
    }
    return line;
}

} // namespace

void runCommand(Session& session, const Words& words)
{
    endIfInterrupted();
    const auto recorder = session.recorder();
    if (!recorder) {
        return runPlainly(session, words);
    }
    Kiv_v4::host::Recorder::Input input(*recorder, lineOf(words));
    try {
        runPlainly(session, words);
    } catch (const std::exception& error) {
        input.failed(error.what());
        throw;
    }
}

} // namespace app::shell
