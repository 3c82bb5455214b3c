#pragma once

#include <cstdint>
#include <type_traits>

#include "kiv/export.h"

namespace Kiv_v4 {

/// The description of a plug-in, for its host. A plug-in is a shared object that defines the
/// function `kivPlugin`, which is declared at the end of this header:
///
///     const Kiv::PluginInfo* kivPlugin()
///     {
///         static constexpr auto info = Kiv::pluginInfo<ShotList>("shotList");
///         return &info;
///     }
///
/// The class named there usually holds a `RunTimeRegistration`, and with it everything that the
/// plug-in provides; the host makes it after loading and deletes it before unloading.
/// `kiv_add_plugin` of the CMake package builds such an object, `host::PluginLoader` loads it.
/// Neither needs the other.
///
/// **Layout.** Plain C types; new fields are only added at the end, by a version with a higher
/// minor number. The first two fields are the same for every major number; they tell whether the
/// host may read the rest.
struct PluginInfo
{
    /// The major number of the interface that hosts of this header offer.
    static constexpr std::uint32_t kInterfaceMajor = 4;
    /// The minor number: a host loads plug-ins of its own major number whose minor number is not
    /// higher.
    static constexpr std::uint32_t kInterfaceMinor = 2;

    std::uint32_t interfaceMajor; ///< `kInterfaceMajor` as the plug-in was built.
    std::uint32_t interfaceMinor; ///< `kInterfaceMinor` as the plug-in was built.

    /// The plug-in's name. It must not be empty, and no other loaded plug-in may have it.
    const char* name;

    /// Makes everything that the plug-in provides and returns the pointer that the host later gives
    /// to `destroy`. Must not return null. May throw exceptions derived from `std::exception`: host
    /// and plug-in must be built with one toolchain, as all of the library's interfaces require.
    /// Before it throws, it must take back everything that it had registered.
    void* (*create)();

    /// Takes everything back: run-times, observers, functions. Called once, with the result of
    /// `create`, before the code is unloaded. Must not throw.
    void (*destroy)(void* plugin);
};

/// The description of a plug-in that is an object of class `T`. `name` must be a literal.
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

/// Each plug-in must define it; nothing else may. Its result must live as long as the code is
/// loaded.
extern "C" KIV_EXPORT const Kiv_v4::PluginInfo* kivPlugin();
