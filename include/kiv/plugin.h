#pragma once

#include <cstdint>
#include <type_traits>

#include "kiv/export.h"

namespace Kiv_v4 {

/// What a plug-in tells its host before anything of it is made. A plug-in is a shared object that
/// defines the function `kivPlugin`, which is declared at the end of this header:
///
///     const Kiv::PluginInfo* kivPlugin()
///     {
///         static constexpr auto info = Kiv::pluginInfo<ShotList>("shotList");
///         return &info;
///     }
///
/// The class named there usually holds a `RunTimeRegistration`, and with it all that the plug-in
/// brings; it is made after loading and deleted before unloading. `kiv_add_plugin` of the CMake
/// package builds such an object, `host::PluginLoader` loads it. Neither needs the other.
///
/// **Layout.** Plain C types; fields are only ever added at the end, by a version with a higher
/// minor number. The first two tell whether the rest can be relied upon, whatever the major number.
struct PluginInfo
{
    /// The major number of the interface that hosts of this header offer.
    static constexpr std::uint32_t kInterfaceMajor = 4;
    /// The minor number: a host loads plug-ins of its own major number and of no higher minor one.
    static constexpr std::uint32_t kInterfaceMinor = 2;

    std::uint32_t interfaceMajor; ///< `kInterfaceMajor` as the plug-in was built.
    std::uint32_t interfaceMinor; ///< `kInterfaceMinor` as the plug-in was built.

    /// The plug-in's name, which no other loaded plug-in has; not empty.
    const char* name;

    /// Makes what the plug-in brings, and gives what `destroy` takes it back by. Must not give
    /// null. May throw what derives from `std::exception`: host and plug-in are built with one
    /// toolchain, as all of the library's interfaces demand. When it throws, it has taken back what
    /// it had registered.
    void* (*create)();

    /// Takes everything back: run-times, observers, functions. Called once, with what `create`
    /// gave, before the code is unloaded. Must not throw.
    void (*destroy)(void* plugin);
};

/// The description of a plug-in that is an object of class `T`. `name` is a literal.
template <class T>
[[nodiscard]] constexpr PluginInfo pluginInfo(const char* name) noexcept
{
    static_assert(std::is_default_constructible_v<T>,
                  "the host makes the plug-in without arguments");
    return {PluginInfo::kInterfaceMajor, PluginInfo::kInterfaceMinor, name,
            []() -> void* { return new T; }, [](void* plugin) { delete static_cast<T*>(plugin); }};
}

/// The type of the function that a plug-in defines, and its name in the table of symbols.
using PluginEntryPoint = const PluginInfo*();
inline constexpr const char* kPluginEntryPoint = "kivPlugin";

} // namespace Kiv_v4

/// Defined by each plug-in, and by nothing else. What it gives lives as long as the code is loaded.
extern "C" KIV_EXPORT const Kiv_v4::PluginInfo* kivPlugin();
