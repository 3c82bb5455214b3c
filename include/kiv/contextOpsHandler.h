#pragma once

#include <memory>

#include "kiv/contextOps.h"
#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items' `ContextOps`.
class KIV_EXPORT ContextOpsHandler
{
public:
    using Ptr = std::shared_ptr<ContextOpsHandler>;

    ContextOpsHandler();
    ContextOpsHandler(const ContextOpsHandler&) = delete;
    ContextOpsHandler& operator=(const ContextOpsHandler&) = delete;
    virtual ~ContextOpsHandler();

    /// The menu of `item`, an item of this run-time, possibly out of date; null if it has none.
    [[nodiscard]] virtual ContextOps::Ptr contextOps(const SceneItem::Ptr& item) = 0;
};

} // namespace Kiv_v4
