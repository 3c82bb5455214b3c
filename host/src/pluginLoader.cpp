#include "kiv/host/pluginLoader.h"

#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <list>
#include <sstream>
#include <system_error>
#include <typeinfo>
#include <utility>

#include "kiv/globalSelection.h"
#include "kiv/hierarchyHandler.h"
#include "kiv/observableSelection.h"
#include "kiv/pathString.h"
#include "kiv/plugin.h"
#include "kiv/runTimeMgr.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"

namespace Kiv_v4::host {

namespace {

namespace files = std::filesystem;

struct Close
{
    void operator()(void* object) const noexcept { dlclose(object); }
};
using SharedObject = std::unique_ptr<void, Close>;

std::string inOneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// The file name for `dlopen`, which would search the system's folders for a name without a slash.
std::string withFolder(const std::string& file)
{
    return file.find('/') == std::string::npos ? "./" + file : file;
}

SharedObject opened(const std::string& file)
{
    const auto name = withFolder(file);
    SharedObject object(dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL));
    if (!object) {
        std::string reason = dlerror();
        if (reason.compare(0, name.size() + 2, name + ": ") == 0) {
            reason.erase(0, name.size() + 2);
        }
        throw PluginError(file, reason);
    }
    return object;
}

std::string version(std::uint32_t major, std::uint32_t minor)
{
    return std::to_string(major) + '.' + std::to_string(minor);
}

/// The object's description of itself; throws if it is unusable.
const PluginInfo& described(const SharedObject& object, const std::string& file)
{
    const auto entryPoint =
        reinterpret_cast<PluginEntryPoint*>(dlsym(object.get(), kPluginEntryPoint));
    const auto* info = entryPoint ? entryPoint() : nullptr;
    if (!info) {
        throw PluginError(file, std::string("not a plug-in: ") +
                                    (entryPoint ? "'" : "missing function '") + kPluginEntryPoint +
                                    (entryPoint ? "' returned null" : "'"));
    }
    if (info->interfaceMajor != PluginInfo::kInterfaceMajor ||
        info->interfaceMinor > PluginInfo::kInterfaceMinor) {
        throw PluginError(
            file, "it was built against interface " +
                      version(info->interfaceMajor, info->interfaceMinor) + ", this host offers " +
                      version(PluginInfo::kInterfaceMajor, PluginInfo::kInterfaceMinor));
    }
    if (!info->name || !*info->name || !info->create || !info->destroy) {
        throw PluginError(file, "not a plug-in: a name or a function is missing");
    }
    return *info;
}

std::vector<Rtid> registeredIds()
{
    const auto ids = RunTimeMgr::instance().getIds();
    std::vector<Rtid> sorted(ids.begin(), ids.end());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

/// The run-times that were registered since `before` was read.
std::vector<Rtid> registeredSince(const std::vector<Rtid>& before)
{
    const auto now = registeredIds();
    std::vector<Rtid> added;
    std::set_difference(now.begin(), now.end(), before.begin(), before.end(),
                        std::back_inserter(added));
    return added;
}

std::vector<std::string> stillRegistered(const std::vector<Rtid>& runTimes)
{
    auto& manager = RunTimeMgr::instance();
    std::vector<std::string> lines;
    for (const auto id : runTimes) {
        if (manager.hasId(id)) {
            lines.push_back("the run-time '" + manager.getName(id) + "' is still registered");
        }
    }
    return lines;
}

/// Calls the plug-in's `create`. Its exception must be destroyed before the code is unloaded.
void* made(const PluginInfo& info, std::string& failure)
{
    try {
        if (void* plugin = info.create()) {
            return plugin;
        }
        failure = "'create' returned null";
    } catch (const std::exception& error) {
        failure = inOneLine(error.what());
        if (failure.empty()) {
            failure = "'create' threw an exception without a message";
        }
    } catch (...) {
        failure = "'create' threw an exception that is not a std::exception";
    }
    return nullptr;
}

std::vector<Path> topPaths(const std::vector<Rtid>& runTimes)
{
    std::vector<Path> paths;
    for (const auto id : runTimes) {
        if (const auto handler = RunTimeMgr::instance().hierarchyHandler(id)) {
            for (const auto& item : handler->rootItems(Path())) {
                paths.push_back(item->path());
            }
        }
    }
    return paths;
}

void deselect(const std::vector<Rtid>& runTimes)
{
    const auto selection = GlobalSelection::get();
    if (!selection) {
        return;
    }
    const SceneItemList selected(selection->begin(), selection->end());
    for (const auto& item : selected) {
        if (std::count(runTimes.begin(), runTimes.end(), item->runTimeId()) > 0) {
            selection->remove(item);
        }
    }
}

/// Whether the type belongs to the shared object of `symbol`.
bool isOf(const std::type_info& type, const void* symbol)
{
    Dl_info ofType{};
    Dl_info ofSymbol{};
    return dladdr(&type, &ofType) != 0 && dladdr(symbol, &ofSymbol) != 0 &&
           ofType.dli_fbase == ofSymbol.dli_fbase;
}

/// The library's references to the object, as far as they can be seen.
std::vector<std::string> kept(const PluginInfo& info)
{
    std::vector<std::string> lines;
    const auto note = [&](const std::type_info& type, const char* what) {
        if (isOf(type, &info)) {
            lines.push_back(std::string(what) + " is the plug-in's");
        }
    };
    note(PathString::stringFn().target_type(), "PathString::stringFn");
    note(PathString::createPathFn().target_type(), "PathString::createPathFn");
    if (Scene::hasInstance()) {
        const auto& scene = Scene::instance();
        note(typeid(scene), "the installed scene");
    }
    if (const auto& selection = GlobalSelection::get()) {
        const auto& installed = *selection;
        note(typeid(installed), "the global selection");
    }
    return lines;
}

} // namespace

struct PluginLoader::Loaded
{
    Plugin plugin;
    SharedObject object;
    const PluginInfo* info;
    void* made;

    /// Calls the plug-in's `destroy`, and returns a line for each reference that is left.
    std::vector<std::string> destroy()
    {
        std::vector<std::weak_ptr<HierarchyHandler>> handlers;
        for (const auto id : plugin.runTimes) {
            handlers.push_back(RunTimeMgr::instance().hierarchyHandler(id));
        }
        std::vector<std::string> lines;
        try {
            info->destroy(made);
        } catch (...) {
            lines.emplace_back("'destroy' threw an exception");
        }
        const auto registered = stillRegistered(plugin.runTimes);
        lines.insert(lines.end(), registered.begin(), registered.end());
        const auto used = std::count_if(handlers.begin(), handlers.end(),
                                        [](const auto& handler) { return !handler.expired(); });
        if (registered.empty() && used > 0) {
            lines.emplace_back("somebody keeps a hierarchy handler");
        }
        const auto things = kept(*info);
        lines.insert(lines.end(), things.begin(), things.end());
        return lines;
    }
};

PluginError::PluginError(std::string file, const std::string& reason)
    : std::runtime_error("cannot load the plug-in '" + file + "': " + reason),
      _file(std::move(file))
{}

PluginError::~PluginError() = default;

PluginLoader::PluginLoader() = default;

PluginLoader::~PluginLoader()
{
    while (!_loaded.empty()) {
        const auto plugin = std::move(_loaded.back());
        _loaded.pop_back();
        if (!plugin->destroy().empty()) {
            static_cast<void>(plugin->object.release());
        }
    }
}

std::vector<std::string> PluginLoader::filesIn(const std::string& folder)
{
    std::vector<std::string> found;
    try {
        for (const auto& entry : files::directory_iterator(folder)) {
            if (entry.path().extension() == ".so") {
                found.push_back(entry.path().string());
            }
        }
    } catch (const files::filesystem_error& error) {
        throw PluginError(folder, error.code().message());
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<std::string> PluginLoader::filesOnPath()
{
    std::vector<std::string> found;
    const auto* places = std::getenv(kPathVariable);
    std::istringstream text(places ? places : "");
    for (std::string place; std::getline(text, place, ':');) {
        std::error_code ignored;
        if (files::is_directory(place, ignored)) {
            const auto inFolder = filesIn(place);
            found.insert(found.end(), inFolder.begin(), inFolder.end());
        } else if (files::exists(place, ignored)) {
            found.push_back(place);
        }
    }
    return found;
}

Plugin PluginLoader::load(const std::string& file)
{
    auto object = opened(file);
    const auto& info = described(object, file);
    for (const auto& other : _loaded) {
        if (other->plugin.name == info.name) {
            throw PluginError(file, "a plug-in '" + other->plugin.name + "' is already loaded");
        }
    }
    auto loaded = std::make_unique<Loaded>();
    loaded->plugin = {info.name, file, info.interfaceMajor, info.interfaceMinor, {}};
    loaded->info = &info;
    _loaded.reserve(_loaded.size() + 1);

    const auto before = registeredIds();
    std::string failure;
    loaded->made = made(info, failure);
    loaded->plugin.runTimes = registeredSince(before);
    if (!loaded->made) {
        for (const auto& line : stillRegistered(loaded->plugin.runTimes)) {
            failure += "; " + line;
            static_cast<void>(object.release()); // its handlers can still be called
        }
        throw PluginError(file, failure);
    }
    loaded->object = std::move(object);
    _loaded.push_back(std::move(loaded));
    return _loaded.back()->plugin;
}

std::vector<PluginError> PluginLoader::load(const std::vector<std::string>& files)
{
    std::vector<PluginError> refused;
    for (const auto& file : files) {
        try {
            load(file);
        } catch (const PluginError& error) {
            refused.push_back(error);
        }
    }
    return refused;
}

std::vector<Plugin> PluginLoader::plugins() const
{
    std::vector<Plugin> all;
    for (const auto& loaded : _loaded) {
        all.push_back(loaded->plugin);
    }
    return all;
}

void PluginLoader::onUnload(Release release)
{
    _releases.push_back(std::move(release));
}

std::vector<std::string> PluginLoader::unload(const std::string& name)
{
    const auto found = std::find_if(_loaded.begin(), _loaded.end(), [&](const auto& loaded) {
        return loaded->plugin.name == name;
    });
    if (found == _loaded.end()) {
        throw std::invalid_argument("no such plug-in '" + name + "'");
    }
    std::vector<std::string> held;
    for (const auto& release : _releases) {
        const auto lines = release((*found)->plugin);
        held.insert(held.end(), lines.begin(), lines.end());
    }
    if (!held.empty()) {
        return held;
    }
    const auto& runTimes = (*found)->plugin.runTimes;
    deselect(runTimes);
    const auto gone = topPaths(runTimes);
    const auto loaded = std::move(*found);
    _loaded.erase(found);
    held = loaded->destroy();
    if (Scene::hasInstance()) {
        for (const auto& path : gone) {
            Scene::instance().notify(ObjectDestroyed(path));
        }
    }
    if (!held.empty()) {
        static_cast<void>(loaded->object.release());
        return held;
    }
    loaded->object.reset();
    if (const SharedObject stays{
            dlopen(withFolder(loaded->plugin.file).c_str(), RTLD_NOW | RTLD_NOLOAD)}) {
        held.emplace_back("the object stays in the process: it was built without "
                          "-fno-gnu-unique, or somebody else opened it");
    }
    return held;
}

} // namespace Kiv_v4::host
