#pragma once

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// The light properties of an item changed.
class KIV_EXPORT LightChanged : public Notification
{
public:
    explicit LightChanged(const SceneItem::Ptr& item);
    ~LightChanged() override;

    /// The item whose light changed.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    const SceneItem::Ptr _item;
};

} // namespace Kiv_v4
