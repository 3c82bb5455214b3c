#pragma once

#include "kiv/export.h"
#include "kiv/pathSubject.h"

namespace Kiv_v4 {

/// Notifies its observers when an item moves in the world: when its transform or that of an
/// ancestor changes. It follows the item as `PathSubject` does.
class KIV_EXPORT Transform3dPathSubject : public PathSubject
{
public:
    explicit Transform3dPathSubject(const Path& path);
    ~Transform3dPathSubject() override;
};

} // namespace Kiv_v4
