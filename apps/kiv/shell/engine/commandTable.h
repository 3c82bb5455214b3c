#pragma once

#include <span>
#include <string>
#include <string_view>

#include "shell/engine/session.h"
#include "shell/engine/usage.h"
#include "shell/engine/words.h"

namespace app::shell {

/// One command of the shell. `help`, the completion and the manual page tell what is here.
struct Command
{
    std::string_view name;
    std::string_view usage;   ///< See `Usage`.
    std::string_view summary; ///< What it does.
    std::string_view example; ///< A call of it.

    /// Throws `std::exception` with the reason when it cannot be done; then nothing is changed.
    void (*run)(Session& session, const Arguments& arguments);
};

/// The commands of one kind, under a title.
struct CommandKind
{
    std::string_view title;
    std::span<const Command> commands;
};

/// All commands, in the order of `help`.
[[nodiscard]] std::span<const CommandKind> commandKinds();

/// The command of that name, or null.
[[nodiscard]] const Command* commandNamed(std::string_view name);

/// What to say of a name that no command has.
[[nodiscard]] std::string unknownCommand(const std::string& name);

/// Runs the command that the words begin with. Throws `std::runtime_error` when there is none of
/// that name, the arguments do not fit its usage or an interrupt came; otherwise as the command
/// does.
void runCommand(Session& session, const Words& words);

// The kinds, each in a file of its own.
[[nodiscard]] CommandKind browsing();
[[nodiscard]] CommandKind files();
[[nodiscard]] CommandKind structure();
[[nodiscard]] CommandKind selecting();
[[nodiscard]] CommandKind attributeEditing();
[[nodiscard]] CommandKind placing();
[[nodiscard]] CommandKind camerasAndLights();
[[nodiscard]] CommandKind undoing();
[[nodiscard]] CommandKind general();

} // namespace app::shell
