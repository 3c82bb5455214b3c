// A plug-in: a shelf of props as a run-time of its own.
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"

namespace {

class Props
{
public:
    Props()
    {
        auto& model = _runTime.model();
        const auto shelf = model.make(model.root(), "group", "shelf");
        model.make(shelf->path(), "mesh", "lamp");
        model.make(shelf->path(), "mesh", "vase");
    }

private:
    Kiv::memory::RunTime _runTime{"props", "props"};
};

} // namespace

const Kiv::PluginInfo* kivPlugin()
{
    static constexpr auto info = Kiv::pluginInfo<Props>("props");
    return &info;
}
