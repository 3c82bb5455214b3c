// A plug-in for pluginLoader_test.cpp: a right one, or one with the fault that the build asks for.
#include <memory>
#include <stdexcept>

#include "kiv/hierarchyHandler.h"
#include "kiv/pathSegment.h"
#include "kiv/plugin.h"
#include "kiv/runTimeRegistration.h"

using namespace Kiv_v4;

#ifdef KIV_MissingSymbol
void definedNowhere();
#endif

namespace {

class LoadedItem : public SceneItem
{
public:
    using SceneItem::SceneItem;

    [[nodiscard]] std::string nodeType() const override { return "loaded"; }
};

/// A scene of one item.
class LoadedHierarchyHandler : public HierarchyHandler
{
public:
    explicit LoadedHierarchyHandler(Rtid id) : _top(PathSegment("top", id, '!')) {}

    [[nodiscard]] Hierarchy::Ptr hierarchy(const SceneItem::Ptr&) override { return nullptr; }

    [[nodiscard]] SceneItem::Ptr createItem(const Path& path) override
    {
        return path == _top ? std::make_shared<LoadedItem>(path) : nullptr;
    }

    [[nodiscard]] SceneItemList rootItems(const Path& gateway) override
    {
        return gateway.empty() ? SceneItemList{createItem(_top)} : SceneItemList{};
    }

private:
    const Path _top;
};

class Loaded
{
public:
    Loaded()
    {
#if defined(KIV_Throwing)
        throw std::runtime_error("no licence,\nsaid the server");
#elif defined(KIV_MissingSymbol)
        definedNowhere();
#endif
        RunTimeMgr::instance().setHierarchyHandler(
            _registration->id(), std::make_shared<LoadedHierarchyHandler>(_registration->id()));
    }

    ~Loaded()
    {
#ifdef KIV_Leaving
        // In reach of what looks for leaks.
        [[maybe_unused]] static RunTimeRegistration* volatile left;
        left = _registration.release();
#endif
    }

private:
    std::unique_ptr<RunTimeRegistration> _registration =
        std::make_unique<RunTimeRegistration>("loaded", '!');
};

} // namespace

const PluginInfo* kivPlugin()
{
    static const auto info = [] {
        auto told = pluginInfo<Loaded>("test plug-in");
#if defined(KIV_OtherMajor)
        ++told.interfaceMajor;
#elif defined(KIV_NewerMinor)
        ++told.interfaceMinor;
#elif defined(KIV_Unfinished)
        told.destroy = nullptr;
#endif
        return told;
    }();
    return &info;
}
