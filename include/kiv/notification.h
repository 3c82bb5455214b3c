#pragma once

#include "kiv/export.h"

namespace Kiv_v4 {

/// The message of a subject to its observers. Derive one class from it for each kind of message;
/// observers find out the kind with `dynamic_cast`.
///
/// **Lifetime.** Notifications are made on the stack and passed by reference: an observer must copy
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
