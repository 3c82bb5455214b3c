// A run-time in a shared object of its own, loaded and unloaded by plugin_test.cpp.
#include "plugin.h"

#include "callback.h"
#include "stubs.h"

using namespace Kiv_v4;

namespace {

class NotedItem : public plugin::Item
{
public:
    using Item::Item;

    [[nodiscard]] std::string nodeType() const override { return "noted"; }
    [[nodiscard]] Value note() const override { return std::string("from the plug-in"); }
};

struct Plugin
{
    explicit Plugin(const Observer::Ptr& host) : registration("plugin", '!')
    {
        const auto hierarchy = std::make_shared<test::HierarchyStub>();
        RunTimeMgr::instance().setHierarchyHandler(registration.id(), hierarchy);
        hierarchy->onCreateItem = [host](const Path& path) {
            if (path.back().string() == "refused") {
                throw plugin::Refused(path.string());
            }
            const auto item = std::make_shared<NotedItem>(path);
            dynamic_cast<plugin::Listener&>(*host).made(*item);
            return item;
        };
        PathString::registerPathComponentSeparator(registration.id(), '~');
        PathString::setCreateSingleSegmentPathFn(registration.id(), [](const std::string& text) {
            return text == "own" ? PathString::path("!item") : Path();
        });
        Scene::instance().addObserver(observer);
        Transform3d::addObserver(std::make_shared<NotedItem>(observed), observer);
    }

    // Releasing the observer would not be enough.
    ~Plugin()
    {
        Transform3d::removeObserver(observed, observer);
        Scene::instance().removeObserver(observer);
    }

    const RunTimeRegistration registration;
    const Path observed = PathString::path("!observed");
    const Observer::Ptr observer = test::Callback::make([](const Notification&) {});
};

} // namespace

extern "C" KIV_EXPORT void load(const Observer::Ptr& host, std::shared_ptr<void>& plugin)
{
    plugin = std::make_shared<Plugin>(host);
}
