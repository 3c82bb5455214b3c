#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/object3d.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items' `Object3d`.
class KIV_EXPORT Object3dHandler
{
public:
    using Ptr = std::shared_ptr<Object3dHandler>;

    Object3dHandler();
    Object3dHandler(const Object3dHandler&) = delete;
    Object3dHandler& operator=(const Object3dHandler&) = delete;
    virtual ~Object3dHandler();

    /// The object at `item`, an item of this run-time, possibly out of date; null if it has none.
    [[nodiscard]] virtual Object3d::Ptr object3d(const SceneItem::Ptr& item) = 0;
};

} // namespace Kiv_v4
