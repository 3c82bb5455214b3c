#pragma once

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/path.h"

namespace Kiv_v4 {

/// An item was shown or hidden.
class KIV_EXPORT VisibilityChanged : public Notification
{
public:
    explicit VisibilityChanged(const Path& path);
    ~VisibilityChanged() override;

    /// The path of the item.
    [[nodiscard]] Path path() const { return _path; }

private:
    const Path _path;
};

} // namespace Kiv_v4
