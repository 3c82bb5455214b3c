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

/// A loaded plug-in.
struct Plugin
{
    std::string name;             ///< The plug-in's own name for itself.
    std::string file;             ///< The argument of `load`.
    std::uint32_t interfaceMajor; ///< The major number of the interface that it was built against.
    /// The minor number of that interface.
    std::uint32_t interfaceMinor;
    std::vector<Rtid> runTimes; ///< The run-times that its `create` registered.
};

/// A file could not be loaded. The message names the file and the reason, in one line.
class KIV_EXPORT PluginError : public std::runtime_error
{
public:
    PluginError(std::string file, const std::string& reason);
    PluginError(const PluginError&) = default;
    ~PluginError() override;

    /// The argument of `load`.
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
/// Clients reach the run-times of plug-ins through the registry (`RunTimeMgr`), by the ids of
/// `Plugin::runTimes`.
///
/// **Unloading.** The loader unloads code only when nothing refers to it. It takes the plug-in's
/// items out of the global selection; everything else that the host holds (named selections,
/// commands in its undo history, items, interface objects) the host must release in a function
/// given to `onUnload`. As far as the loader can see from outside, it detects references that are
/// left; then it leaves the code in the process and reports them. It cannot see items and commands
/// that no `onUnload` function knows of.
///
/// **Lifetime.** The destructor unloads all plug-ins, the last loaded first, without calling the
/// `onUnload` functions: the host must have released everything before.
class KIV_EXPORT PluginLoader
{
public:
    /// The environment variable with files and folders of plug-ins, separated by colons.
    static constexpr const char* kPathVariable = "KIV_PLUGIN_PATH";

    /// Releases the host's references to a plug-in that will be unloaded, and returns a line for
    /// each reference that it cannot release. Must not load or unload plug-ins.
    using Release = std::function<std::vector<std::string>(const Plugin& plugin)>;

    PluginLoader();
    PluginLoader(const PluginLoader&) = delete;
    PluginLoader& operator=(const PluginLoader&) = delete;
    ~PluginLoader();

    /// Returns the plug-in files (`.so`) of a folder, in the order of their names. Throws
    /// `PluginError` if the folder cannot be read.
    [[nodiscard]] static std::vector<std::string> filesIn(const std::string& folder);

    /// Returns the files that `KIV_PLUGIN_PATH` names and those of the folders that it names,
    /// without those that do not exist.
    [[nodiscard]] static std::vector<std::string> filesOnPath();

    /// Loads one plug-in and calls its `create`. A file name without a folder refers to the working
    /// folder. Throws `PluginError` and changes nothing if the file cannot be loaded, is not a
    /// plug-in or was built against another interface, if a loaded plug-in has its name, and if its
    /// `create` throws.
    Plugin load(const std::string& file);

    /// Loads the files that can be loaded, in order, and returns the errors of the others.
    std::vector<PluginError> load(const std::vector<std::string>& files);

    /// The loaded plug-ins, in the order of loading.
    [[nodiscard]] std::vector<Plugin> plugins() const;

    /// From now on calls `release` before each unloading, after the functions given before.
    void onUnload(Release release);

    /// Unloads the plug-in of that name. Returns a line for each reference to it that is left; none
    /// if its code was unloaded. If a function of `onUnload` could not release something, the
    /// plug-in stays as it is. A reference found later keeps the code in the process, but the
    /// plug-in is destroyed and no longer listed; the file can then be loaded again.
    ///
    /// Notifies the scene, if there is one, with an `ObjectDestroyed` for each top item of the
    /// plug-in. Throws `std::invalid_argument` if no plug-in has that name. Must not be called
    /// inside a notification.
    std::vector<std::string> unload(const std::string& name);

private:
    struct KIV_HIDDEN Loaded;

    std::vector<std::unique_ptr<Loaded>> _loaded;
    std::vector<Release> _releases;
};

} // namespace Kiv_v4::host
