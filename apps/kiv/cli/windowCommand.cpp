#include <filesystem>
#include <memory>

#include "cli/commandLine.h"
#include "cli/programCommand.h"
#include "cli/windowSyntax.h"
#include "terminal/otherProgram.h"

namespace app {

namespace {

/// Shows the window in this process, or becomes the program with it, which is beside this one if Qt
/// was there to build it.
int show(const WindowWishes& wishes, const Context& context)
{
    const auto arguments = wordsOf(wishes);
    if (context.surroundings.showWindow) {
        auto all = context.pythonSources;
        all.insert(all.end(), arguments.begin(), arguments.end());
        return context.surroundings.showWindow(all);
    }
    std::vector<std::string> words{
        std::filesystem::read_symlink("/proc/self/exe").replace_filename("kiv-window").string()};
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
            [wishes, &program](const Context& context) {
                auto all = *wishes; // with the plug-ins that were told before the command
                const auto& before = program.get_option("--plugin")->results();
                all.plugins.insert(all.plugins.begin(), before.begin(), before.end());
                return show(all, context);
            },
            false};
}

} // namespace app
