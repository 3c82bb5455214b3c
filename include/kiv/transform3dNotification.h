#pragma once

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// The transform of an item changed.
class KIV_EXPORT Transform3dChanged : public Notification
{
public:
    explicit Transform3dChanged(const SceneItem::Ptr& item);
    ~Transform3dChanged() override;

    /// The item whose transform changed.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    const SceneItem::Ptr _item;
};

} // namespace Kiv_v4
