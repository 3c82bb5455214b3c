#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/light.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items' lights.
class KIV_EXPORT LightHandler
{
public:
    using Ptr = std::shared_ptr<LightHandler>;

    LightHandler();
    LightHandler(const LightHandler&) = delete;
    LightHandler& operator=(const LightHandler&) = delete;
    virtual ~LightHandler();

    /// The light at `item`; null if it is not a light.
    [[nodiscard]] virtual Light::Ptr light(const SceneItem::Ptr& item) = 0;
};

} // namespace Kiv_v4
