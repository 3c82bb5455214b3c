#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace app {

/// What the window is told: by `kiv window`, which hands it on, and by its program itself.
struct WindowWishes
{
    std::vector<std::string> files;
    std::vector<std::string> plugins;
    std::string camera;     ///< Its path; empty for none.
    std::string screenshot; ///< The file; empty for a window on the screen.
    std::string size = "1280x800";
    bool dark = false;
};

/// Gives the command its arguments and options, and the prose of its help.
void defineWindowOptions(CLI::App& command, WindowWishes& wishes);

/// The arguments that say the same.
[[nodiscard]] std::vector<std::string> wordsOf(const WindowWishes& wishes);

/// The title of the command.
inline constexpr const char* kWindowTitle = "Show scenes in a window, or write a picture of it";

} // namespace app
