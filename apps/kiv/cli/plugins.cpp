#include "cli/plugins.h"

#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/hierarchyHandler.h"
#include "kiv/runTimeMgr.h"

#include "cli/commandLine.h"
#include "cli/filling.h"
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

std::size_t Plugins::openInPython(const std::vector<std::string>& sources)
{
    return failures(sources, [this](const std::string& source) {
        _inPython.push_back(_surroundings.openInPython(source));
    });
}

bool Plugins::openIfForPython(const std::string& file)
{
    if (!_surroundings.isForPython || !_surroundings.isForPython(file)) {
        return false;
    }
    _inPython.push_back(_surroundings.openInPython(file));
    return true;
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
    for (const auto& opened : _inPython) {
        for (const auto& root : opened.roots) {
            if (auto item = Hierarchy::createItem(root)) {
                items.push_back(std::move(item));
            }
        }
    }
    return items;
}

} // namespace app
