#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kiv/conformance/conformance.h"
#include "kiv/host/pluginLoader.h"
#include "kiv/sceneItem.h"

namespace app {

struct Surroundings;

/// The plug-ins and the run-times in Python of one run of the program.
class Plugins
{
public:
    explicit Plugins(const Surroundings& surroundings) : _surroundings(surroundings) {}

    /// Loads the files, and those of `KIV_PLUGIN_PATH`. Complains of what is refused, and gives the
    /// number of `files` among it.
    std::size_t load(const std::vector<std::string>& files);

    /// Opens run-times in Python. Complains of those that cannot be opened, and gives their number.
    std::size_t openInPython(const std::vector<std::string>& sources);

    /// Opens what Python shows in place of a scene file, such as a folder. Returns whether `file`
    /// is that.
    bool openIfForPython(const std::string& file);

    [[nodiscard]] std::vector<Kiv_v4::host::Plugin> all() const { return _loader.plugins(); }

    /// The top items of the scenes that the run-times brought: of plug-ins, then of Python, each in
    /// the order of loading.
    [[nodiscard]] Kiv_v4::SceneItemList topItems() const;

private:
    const Surroundings& _surroundings;
    std::vector<Kiv_v4::conformance::Running> _inPython;
    Kiv_v4::host::PluginLoader _loader;
};

} // namespace app
