#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/hierarchy.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items and their hierarchies. Clients use the entry
/// points `Hierarchy::hierarchy` and `Hierarchy::createItem`.
class KIV_EXPORT HierarchyHandler
{
public:
    using Ptr = std::shared_ptr<HierarchyHandler>;

    HierarchyHandler();
    HierarchyHandler(const HierarchyHandler&) = delete;
    HierarchyHandler& operator=(const HierarchyHandler&) = delete;
    virtual ~HierarchyHandler();

    /// The hierarchy of `item`, an item of this run-time.
    [[nodiscard]] virtual Hierarchy::Ptr hierarchy(const SceneItem::Ptr& item) = 0;

    /// The item that the run-time has at `path`, or null.
    [[nodiscard]] virtual SceneItem::Ptr createItem(const Path& path) = 0;

    /// The items with which this run-time's segment begins under the item at `gateway`, in order;
    /// with an empty path, the top items of the run-time's own scene. The run-time of a gateway
    /// calls this to list the children of the other run-time.
    [[nodiscard]] virtual SceneItemList rootItems(const Path& gateway) = 0;
};

} // namespace Kiv_v4
