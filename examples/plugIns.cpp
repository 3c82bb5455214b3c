// A host that loads the plug-in named on its command line, shows its items, and unloads it.
#include <iostream>

#include "kiv/host/pluginLoader.h"
#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"

namespace {

void print(const Kiv::SceneItem::Ptr& item)
{
    std::cout << "  " << Kiv::PathString::string(item->path()) << '\n';
    for (const auto& child : Kiv::Hierarchy::hierarchy(item)->children()) {
        print(child);
    }
}

} // namespace

int main(int, char** argv)
{
    Kiv::host::UndoHistory history;
    Kiv::host::PluginLoader loader;
    loader.onUnload([&](const Kiv::host::Plugin& plugin) {
        for (const auto id : plugin.runTimes) {
            history.dropRunTime(id); // its commands lead into the plug-in's code
        }
        return std::vector<std::string>();
    });
    for (const auto& refused : loader.load({"nowhere.so", argv[1]})) {
        std::cout << refused.what() << '\n';
    }

    for (const auto& plugin : loader.plugins()) {
        std::cout << plugin.name << ", for interface " << plugin.interfaceMajor << '.'
                  << plugin.interfaceMinor << '\n';
        for (const auto id : plugin.runTimes) {
            const auto handler = Kiv::RunTimeMgr::instance().hierarchyHandler(id);
            for (const auto& top : handler->rootItems(Kiv::Path())) {
                print(top);
            }
        }
    }

    for (const auto& plugin : loader.plugins()) {
        const auto held = loader.unload(plugin.name);
        std::cout << plugin.name << (held.empty() ? " has gone\n" : " is held\n");
        for (const auto& line : held) {
            std::cout << "  " << line << '\n';
        }
    }
}
