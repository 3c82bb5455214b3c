#pragma once

#include "kiv/export.h"

namespace Kiv_v4 {

/// What a subject tells its observers. Derive from it one class per kind of news; observers find
/// out the kind with `dynamic_cast`.
///
/// **Lifetime.** Notifications are made on the stack and passed by reference: an observer copies
/// what it wants to keep.
class KIV_EXPORT Notification
{
public:
    Notification();
    Notification(const Notification&) = default;
    Notification& operator=(const Notification&) = default;
    virtual ~Notification();
};

} // namespace Kiv_v4
