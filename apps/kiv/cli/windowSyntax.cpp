#include "cli/windowSyntax.h"

#include <regex>

namespace app {

namespace {

std::string sizeTrouble(const std::string& text)
{
    static const std::regex form("[1-9][0-9]{0,4}x[1-9][0-9]{0,4}");
    return std::regex_match(text, form) ? "" : "not a size: '" + text + "'";
}

} // namespace

void defineWindowOptions(CLI::App& command, WindowWishes& wishes)
{
    command.footer("Documents (.json) are opened, other files are mounted side by side.\n"
                   "Example: kiv window scene.gltf --screenshot scene.png --size 800x600");
    command.add_option("FILE", wishes.files, "Documents and scene files")->type_name("");
    command.add_option("--camera", wishes.camera, "Look through the camera at this path")
        ->type_name("PATH");
    command.add_flag("--dark", wishes.dark, "Use dark colours");
    command
        .add_option("--plugin", wishes.plugins, "Load a plug-in, beside those of KIV_PLUGIN_PATH")
        ->type_name("FILE")
        ->allow_extra_args(false);
    command
        .add_option("--screenshot", wishes.screenshot,
                    "Write a picture of the window in PNG; this needs no screen")
        ->type_name("FILE");
    command.add_option("--size", wishes.size, "The size of the picture; by default 1280x800")
        ->type_name("WxH")
        ->check(sizeTrouble, "");
}

std::vector<std::string> wordsOf(const WindowWishes& wishes)
{
    std::vector<std::string> words;
    const auto add = [&words](const char* option, const std::string& value) {
        if (!value.empty()) {
            words.push_back(std::string(option) + "=" + value);
        }
    };
    add("--camera", wishes.camera);
    add("--screenshot", wishes.screenshot);
    add("--size", wishes.size);
    for (const auto& plugin : wishes.plugins) {
        add("--plugin", plugin);
    }
    if (wishes.dark) {
        words.emplace_back("--dark");
    }
    words.emplace_back("--");
    words.insert(words.end(), wishes.files.begin(), wishes.files.end());
    return words;
}

} // namespace app
