#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unistd.h>
#include <vector>

#include "cli/programCommand.h"

namespace app {

namespace {

/// Becomes the program with the window, which is beside this one where Qt was there to build it.
[[noreturn]] int show(const std::vector<std::string>& words)
{
    const auto program =
        std::filesystem::read_symlink("/proc/self/exe").replace_filename("kiv-window");
    std::vector<std::string> arguments{program.string()};
    arguments.insert(arguments.end(), words.begin(), words.end());
    std::vector<char*> pointers;
    for (auto& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    execv(program.c_str(), pointers.data());
    throw std::runtime_error(program.string() + ": " + std::strerror(errno) +
                             " (the window is built where Qt is installed)");
}

} // namespace

Command defineWindow(CLI::App& program)
{
    auto& syntax = *program.add_subcommand(
        "window", "Show scenes in a window, or write a picture of it (kiv window --help)");
    // The other program reads its arguments itself, also those that this one knows.
    syntax.prefix_command();
    syntax.allow_extras();
    syntax.fallthrough(false);
    syntax.set_help_flag();
    return {&syntax, [&syntax](const Context&) { return show(syntax.remaining()); }, false};
}

} // namespace app
