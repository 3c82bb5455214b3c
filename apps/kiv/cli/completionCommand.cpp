#include <memory>
#include <string>

#include "cli/completionScripts.h"
#include "cli/manualPage.h"
#include "cli/programCommand.h"
#include "cli/usageTrouble.h"
#include "terminal/diagnostics.h"

namespace app {

Command defineCompletion(CLI::App& program)
{
    const auto shell = std::make_shared<std::string>();
    auto& syntax =
        *program.add_subcommand("completion", "Print a script that completes kiv in a shell");
    syntax.footer("An installed kiv has the scripts where the shells look for them.\n"
                  "Example: source <(kiv completion bash)");
    syntax.add_option("bash|zsh|fish", *shell, "The shell")
        ->type_name("")
        ->required()
        ->check(oneOf({"bash", "zsh", "fish"}));
    return {&syntax,
            [shell, &program](const Context& context) {
                const auto all = syntaxOf(program);
                context.output.write(*shell == "bash"  ? bashCompletion(all)
                                     : *shell == "zsh" ? zshCompletion(all)
                                                       : fishCompletion(all));
                return kSuccess;
            },
            false};
}

Command defineManual(CLI::App& program)
{
    auto& syntax = *program.add_subcommand("manual", "Print the manual page for man");
    syntax.footer("Example: kiv manual | man -l -")->group("");
    return {&syntax,
            [&program](const Context& context) {
                context.output.write(manualPage(syntaxOf(program)));
                return kSuccess;
            },
            false};
}

} // namespace app
