#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/transform3d.h"

namespace Kiv_v4 {

/// A run-time installs this handler to make its items' transforms.
class KIV_EXPORT Transform3dHandler
{
public:
    using Ptr = std::shared_ptr<Transform3dHandler>;

    Transform3dHandler();
    Transform3dHandler(const Transform3dHandler&) = delete;
    Transform3dHandler& operator=(const Transform3dHandler&) = delete;
    virtual ~Transform3dHandler();

    /// By default returns `transform3d(item)`. Run-times with a cheaper object for reading override
    /// it.
    [[nodiscard]] virtual Transform3dRead::Ptr transform3dRead(const SceneItem::Ptr& item) const;

    /// The transform of `item`, an item of this run-time, possibly out of date; null if it has
    /// none.
    [[nodiscard]] virtual Transform3d::Ptr transform3d(const SceneItem::Ptr& item) const = 0;

    /// By default returns `transform3d(item)`. Run-times with several editors override it.
    [[nodiscard]] virtual Transform3d::Ptr editTransform3d(const SceneItem::Ptr& item,
                                                           const EditTransform3dHint& hint) const;
};

} // namespace Kiv_v4
