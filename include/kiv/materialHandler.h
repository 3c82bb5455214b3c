#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/material.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items' `Material`.
class KIV_EXPORT MaterialHandler
{
public:
    using Ptr = std::shared_ptr<MaterialHandler>;

    MaterialHandler();
    MaterialHandler(const MaterialHandler&) = delete;
    MaterialHandler& operator=(const MaterialHandler&) = delete;
    virtual ~MaterialHandler();

    /// The materials of `item`, an item of this run-time, possibly out of date; null if it has
    /// none.
    [[nodiscard]] virtual Material::Ptr material(const SceneItem::Ptr& item) = 0;
};

} // namespace Kiv_v4
