#pragma once

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// The camera properties of an item changed.
class KIV_EXPORT CameraChanged : public Notification
{
public:
    explicit CameraChanged(const SceneItem::Ptr& item);
    ~CameraChanged() override;

    /// The item whose camera changed.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    const SceneItem::Ptr _item;
};

} // namespace Kiv_v4
