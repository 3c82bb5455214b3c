// The glTF run-time as a plug-in, with the document that the variable GLTF_DOCUMENT names.
#include <cstdlib>

#include "gltfRunTime.h"

namespace {

class GltfPlugin
{
    const char* const _file = std::getenv("GLTF_DOCUMENT");
    GltfRunTime _runTime{GltfDocument::read(_file ? _file : "")};
};

} // namespace

const Kiv::PluginInfo* kivPlugin()
{
    static constexpr auto info = Kiv::pluginInfo<GltfPlugin>("glTF");
    return &info;
}
