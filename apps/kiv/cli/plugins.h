#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kiv/host/pluginLoader.h"
#include "kiv/sceneItem.h"

namespace app {

/// The plug-ins of one run of the program.
class Plugins
{
public:
    /// Loads the files, and those of `KIV_PLUGIN_PATH`. Complains of what is refused, and gives the
    /// number of `files` among it.
    std::size_t load(const std::vector<std::string>& files);

    [[nodiscard]] std::vector<Kiv_v4::host::Plugin> all() const { return _loader.plugins(); }

    /// The top items of the scenes that the plug-ins brought, in the order of loading.
    [[nodiscard]] Kiv_v4::SceneItemList topItems() const;

private:
    Kiv_v4::host::PluginLoader _loader;
};

} // namespace app
