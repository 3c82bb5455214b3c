#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/sceneItemOps.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items' `SceneItemOps`.
class KIV_EXPORT SceneItemOpsHandler
{
public:
    using Ptr = std::shared_ptr<SceneItemOpsHandler>;

    SceneItemOpsHandler();
    SceneItemOpsHandler(const SceneItemOpsHandler&) = delete;
    SceneItemOpsHandler& operator=(const SceneItemOpsHandler&) = delete;
    virtual ~SceneItemOpsHandler();

    /// The operations of `item`, an item of this run-time, possibly out of date; null if it has
    /// none.
    [[nodiscard]] virtual SceneItemOps::Ptr sceneItemOps(const SceneItem::Ptr& item) = 0;
};

} // namespace Kiv_v4
