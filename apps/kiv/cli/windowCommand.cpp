#include <filesystem>

#include "cli/programCommand.h"
#include "terminal/otherProgram.h"

namespace app {

namespace {

/// Becomes the program with the window, which is beside this one if Qt was there to build it.
[[noreturn]] int show(const std::vector<std::string>& words)
{
    std::vector<std::string> arguments{
        std::filesystem::read_symlink("/proc/self/exe").replace_filename("kiv-window").string()};
    arguments.insert(arguments.end(), words.begin(), words.end());
    become(std::move(arguments), "the window is built if Qt is installed");
}

} // namespace

Command defineWindow(CLI::App& program)
{
    auto& syntax =
        *program.add_subcommand("window", "Show scenes in a window, or write a picture of it");
    syntax.footer("kiv window --help tells more.\nExample: kiv window scene.gltf");
    // The other program reads its arguments itself, also those that this one knows.
    syntax.prefix_command();
    syntax.allow_extras();
    syntax.fallthrough(false);
    syntax.set_help_flag();
    return {&syntax, [&syntax](const Context&) { return show(syntax.remaining()); }, false};
}

} // namespace app
