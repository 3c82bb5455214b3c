// A stranger's plug-in, as short as one can be.
#include "kiv/plugin.h"

#include "kiv/runTimeRegistration.h"

namespace {

struct Consumed
{
    const Kiv_v4::RunTimeRegistration registration{"consumed", '/'};
};

} // namespace

const Kiv_v4::PluginInfo* kivPlugin()
{
    static constexpr auto info = Kiv_v4::pluginInfo<Consumed>("consumed");
    return &info;
}
