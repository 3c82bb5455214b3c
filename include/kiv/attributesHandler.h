#pragma once

#include <memory>

#include "kiv/attributes.h"
#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items' `Attributes`.
class KIV_EXPORT AttributesHandler
{
public:
    using Ptr = std::shared_ptr<AttributesHandler>;

    AttributesHandler();
    AttributesHandler(const AttributesHandler&) = delete;
    AttributesHandler& operator=(const AttributesHandler&) = delete;
    virtual ~AttributesHandler();

    /// The attributes of `item`, an item of this run-time, possibly out of date; null if it has
    /// none.
    [[nodiscard]] virtual Attributes::Ptr attributes(const SceneItem::Ptr& item) = 0;
};

} // namespace Kiv_v4
