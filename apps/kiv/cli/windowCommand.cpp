#include <filesystem>
#include <memory>

#include "cli/programCommand.h"
#include "cli/windowSyntax.h"
#include "terminal/otherProgram.h"

namespace app {

namespace {

/// Becomes the program with the window, which is beside this one if Qt was there to build it.
[[noreturn]] void show(const WindowWishes& wishes)
{
    std::vector<std::string> words{
        std::filesystem::read_symlink("/proc/self/exe").replace_filename("kiv-window").string()};
    const auto arguments = wordsOf(wishes);
    words.insert(words.end(), arguments.begin(), arguments.end());
    become(std::move(words), "the window is built if Qt is installed");
}

} // namespace

Command defineWindow(CLI::App& program)
{
    const auto wishes = std::make_shared<WindowWishes>();
    auto& syntax = *program.add_subcommand("window", kWindowTitle);
    defineWindowOptions(syntax, *wishes);
    return {&syntax,
            [wishes, &program](const Context&) -> int {
                auto all = *wishes; // with the plug-ins that were told before the command
                const auto& before = program.get_option("--plugin")->results();
                all.plugins.insert(all.plugins.begin(), before.begin(), before.end());
                show(all);
            },
            false};
}

} // namespace app
