// The glTF run-time as a plug-in, with the document that the environment variable GLTF_DOCUMENT
// names.
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "gltfRunTime.h"

namespace {

class GltfPlugin
{
private:
    static GltfDocument opened()
    {
        const auto* name = std::getenv("GLTF_DOCUMENT");
        std::ifstream file(name ? name : "");
        if (!file) {
            throw std::runtime_error("GLTF_DOCUMENT names no file that can be read");
        }
        return GltfDocument(GltfDocument::Json::parse(file));
    }

    GltfRunTime _runTime{opened()};
};

} // namespace

const Kiv::PluginInfo* kivPlugin()
{
    static constexpr auto info = Kiv::pluginInfo<GltfPlugin>("glTF");
    return &info;
}
