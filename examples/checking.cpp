// Checks a run-time against the contracts: one that forgets to make names valid.
#include <iostream>

#include "kiv/conformance/conformance.h"
#include "kiv/kiv.h"

namespace {

constexpr char kSeparator = ':';
const std::string kName = "C:";

class Folder : public Kiv::SceneItem
{
public:
    using SceneItem::SceneItem;

    [[nodiscard]] std::string nodeType() const override { return "folder"; }
};

/// A single item, with a name that ends with the separator.
class Handler : public Kiv::HierarchyHandler
{
public:
    explicit Handler(Kiv::Rtid id)
        : _top(Kiv::PathSegment(Kiv::PathComponent(kName), id, kSeparator))
    {}

    [[nodiscard]] Kiv::Hierarchy::Ptr hierarchy(const Kiv::SceneItem::Ptr&) override
    {
        return nullptr;
    }

    [[nodiscard]] Kiv::SceneItem::Ptr createItem(const Kiv::Path& path) override
    {
        return path == _top ? std::make_shared<Folder>(path) : nullptr;
    }

    [[nodiscard]] Kiv::SceneItemList rootItems(const Kiv::Path& gateway) override
    {
        return gateway.empty() ? Kiv::SceneItemList{createItem(_top)} : Kiv::SceneItemList{};
    }

private:
    const Kiv::Path _top;
};

Kiv::conformance::Running drives()
{
    const auto registration = std::make_shared<Kiv::RunTimeRegistration>("drives", kSeparator);
    Kiv::RunTimeMgr::instance().setHierarchyHandler(registration->id(),
                                                    std::make_shared<Handler>(registration->id()));
    return {registration, {}};
}

} // namespace

int main()
{
    Kiv::conformance::Options options;
    options.only = {"paths", "names"};
    const auto report = Kiv::conformance::check({"drives", drives}, options);
    std::cout << Kiv::conformance::text(report);
}
