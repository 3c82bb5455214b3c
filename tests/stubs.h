#pragma once

#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <string>

#include "kiv/hierarchyHandler.h"
#include "kiv/runTimeMgr.h"

#include "paths.h"

namespace test {

/// A hierarchy handler that calls its functions, and makes nothing while they are empty.
class HierarchyStub : public Kiv_v4::HierarchyHandler
{
public:
    std::function<Kiv_v4::Hierarchy::Ptr(const Kiv_v4::SceneItem::Ptr&)> onHierarchy;
    std::function<Kiv_v4::SceneItem::Ptr(const Kiv_v4::Path&)> onCreateItem;

    Kiv_v4::Hierarchy::Ptr hierarchy(const Kiv_v4::SceneItem::Ptr& item) override
    {
        return onHierarchy ? onHierarchy(item) : nullptr;
    }

    Kiv_v4::SceneItem::Ptr createItem(const Kiv_v4::Path& path) override
    {
        return onCreateItem ? onCreateItem(path) : nullptr;
    }

    Kiv_v4::SceneItemList rootItems(const Kiv_v4::Path&) override { return {}; }
};

/// Expects that `operation` throws an `Error` with that message.
template <class Error, class Operation>
void expectError(Operation operation, const std::string& message)
{
    EXPECT_THAT(operation, testing::Throws<Error>(
                               testing::Property(&std::exception::what, testing::StrEq(message))));
}

/// Registers a run-time with that hierarchy handler only.
inline Kiv_v4::Rtid registered(const std::string& name,
                               std::shared_ptr<Kiv_v4::HierarchyHandler> handler)
{
    Kiv_v4::RunTimeMgr::Handlers handlers;
    handlers.hierarchyHandler = std::move(handler);
    return Kiv_v4::RunTimeMgr::instance().register_(name, handlers);
}

} // namespace test
