#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/rtid.h"

namespace Kiv_v4::host {

/// A plug-in that is loaded.
struct Plugin
{
    std::string name;             ///< As the plug-in tells it.
    std::string file;             ///< As it was given to the loader.
    std::uint32_t interfaceMajor; ///< The interface that it was built against.
    /// The minor number of that interface.
    std::uint32_t interfaceMinor;
    std::vector<Rtid> runTimes; ///< The run-times that it registered when it was made.
};

/// A file that is not loaded. The message names the file and the reason, in one line.
class KIV_EXPORT PluginError : public std::runtime_error
{
public:
    PluginError(std::string file, const std::string& reason);
    PluginError(const PluginError&) = default;
    ~PluginError() override;

    /// The file, as it was given to the loader.
    [[nodiscard]] const std::string& file() const noexcept { return _file; }

private:
    std::string _file;
};

/// Loads the shared objects that `kiv/plugin.h` describes, and unloads them.
///
///     host::PluginLoader loader;
///     for (const auto& refused : loader.load(host::PluginLoader::filesOnPath())) {
///         std::cerr << refused.what() << '\n';
///     }
///
/// Clients reach what plug-ins bring through the registry (`RunTimeMgr`), by the ids of
/// `Plugin::runTimes`.
///
/// **Unloading.** Code goes only when nothing leads into it any more. The loader takes the
/// plug-in's items out of the global selection; what else the host holds (named selections,
/// commands in its undo history, items, interface objects) it releases in a function given to
/// `onUnload`. The loader finds out, as far as that can be seen from outside, whether something is
/// left, leaves the code in the process then, and says what it is. It cannot see items and commands
/// that are kept where no `onUnload` function knows of them.
///
/// **Lifetime.** The destructor unloads all plug-ins, the last loaded first, without a call of the
/// `onUnload` functions: by then the host has let go.
class KIV_EXPORT PluginLoader
{
public:
    /// The environment variable with files and folders of plug-ins, separated by colons.
    static constexpr const char* kPathVariable = "KIV_PLUGIN_PATH";

    /// Releases what the host holds of a plug-in that is to go, and gives a line for each thing
    /// that it cannot release. Must not load or unload plug-ins.
    using Release = std::function<std::vector<std::string>(const Plugin& plugin)>;

    PluginLoader();
    PluginLoader(const PluginLoader&) = delete;
    PluginLoader& operator=(const PluginLoader&) = delete;
    ~PluginLoader();

    /// The plug-in files (`.so`) of a folder, in the order of their names. Throws `PluginError`
    /// when it cannot be read.
    [[nodiscard]] static std::vector<std::string> filesIn(const std::string& folder);

    /// The files that `KIV_PLUGIN_PATH` names, and those of the folders that it names; what is not
    /// there is left out.
    [[nodiscard]] static std::vector<std::string> filesOnPath();

    /// Loads one plug-in and makes what it brings. A file name without a folder is meant to be in
    /// the working folder. Throws `PluginError`, with everything as before, when the file cannot be
    /// loaded, is no plug-in, was built against another interface, bears the name of a loaded
    /// plug-in, or its `create` throws.
    Plugin load(const std::string& file);

    /// Loads those that can be loaded, in order, and gives the refusals of the others.
    std::vector<PluginError> load(const std::vector<std::string>& files);

    /// The loaded plug-ins, in the order of loading.
    [[nodiscard]] std::vector<Plugin> plugins() const;

    /// Calls `release` before each unloading from now on, after the functions given before.
    void onUnload(Release release);

    /// Unloads the plug-in of that name, and gives a line for each thing that still holds on to it;
    /// none when its code has left the process. When a function of `onUnload` could not release
    /// something, the plug-in stays as it is. What is found later leaves the code in the process,
    /// though the plug-in is destroyed and no longer listed; the file can be loaded again then.
    ///
    /// Tells the scene, if there is one, with an `ObjectDestroyed` per top item that the objects
    /// are gone. Throws `std::invalid_argument` when no plug-in has that name. Must not be called
    /// inside a notification.
    std::vector<std::string> unload(const std::string& name);

private:
    struct Loaded;

    std::vector<std::unique_ptr<Loaded>> _loaded;
    std::vector<Release> _releases;
};

} // namespace Kiv_v4::host
