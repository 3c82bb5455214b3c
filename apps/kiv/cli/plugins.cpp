#include "cli/plugins.h"

#include "kiv/hierarchyHandler.h"
#include "kiv/runTimeMgr.h"

#include "terminal/diagnostics.h"

namespace app {

using namespace Kiv_v4;

std::size_t Plugins::load(const std::vector<std::string>& files)
{
    const auto complainOf = [](const std::vector<host::PluginError>& refused) {
        for (const auto& error : refused) {
            complain(error.what());
        }
        return refused.size();
    };
    complainOf(_loader.load(host::PluginLoader::filesOnPath()));
    return complainOf(_loader.load(files));
}

SceneItemList Plugins::topItems() const
{
    SceneItemList items;
    for (const auto& plugin : _loader.plugins()) {
        for (const auto id : plugin.runTimes) {
            if (const auto handler = RunTimeMgr::instance().hierarchyHandler(id)) {
                items.splice(items.end(), handler->rootItems(Path()));
            }
        }
    }
    return items;
}

} // namespace app
