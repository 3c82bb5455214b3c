#include <dlfcn.h>
#include <stdexcept>

#include "kiv/hierarchyHandler.h"
#include "kiv/host/pluginLoader.h"
#include "kiv/runTimeMgr.h"

#include "probes.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

namespace {

std::vector<Path> topPaths(const host::Plugin& plugin)
{
    std::vector<Path> paths;
    for (const auto id : plugin.runTimes) {
        for (const auto& item : RunTimeMgr::instance().hierarchyHandlerRef(id).rootItems(Path())) {
            paths.push_back(item->path());
        }
    }
    return paths;
}

} // namespace

Candidate pluginCandidate(const std::string& file)
{
    const auto make = [file] {
        const auto loader = std::make_shared<host::PluginLoader>();
        if (loader->load(file).runTimes.empty()) {
            throw std::runtime_error("the plug-in registers no run-time");
        }
        // Never closed, so that objects of the run-time that probes keep lead into loaded code.
        static_cast<void>(dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD));
        return Running{loader, {}};
    };
    return {file, make, file};
}

void checkUnloading(Checking& checking)
{
    const auto& file = checking.candidate().pluginFile;
    if (file.empty()) {
        checking.skip("plugin.unloads", "it is not a plug-in");
        return;
    }
    for (int round = 1; round <= 5; ++round) {
        const auto when = " for the " + std::to_string(round) + ". time";
        checking.at("plugin.unloads", "loading" + when);
        host::PluginLoader loader;
        const auto plugin = loader.load(file);
        const auto tops = topPaths(plugin);
        static_cast<void>(snapshot(tops, checking.options().maxItems));
        checking.at("plugin.unloads", "unloading" + when);
        for (const auto& line : loader.unload(plugin.name)) {
            checking.found("nothing holds on to the plug-in", line);
        }
    }
}

} // namespace Kiv_v4::conformance
