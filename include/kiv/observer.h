#pragma once

#include <memory>

#include "kiv/export.h"

namespace Kiv_v4 {

class Notification;

/// The receiver of a subject's notifications.
///
/// **Lifetime.** The owner of an observer must keep it by shared pointer for as long as it shall be
/// notified; subjects keep weak references only. Releasing it ends the notifications, but before
/// its code is unloaded it must be removed (`RunTimeRegistration`).
class KIV_EXPORT Observer
{
public:
    using Ptr = std::shared_ptr<Observer>;

    Observer();
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    virtual ~Observer();

    /// Receives a notification; `Subject` describes what the observer may do meanwhile. By default
    /// does nothing.
    virtual void operator()(const Notification& notification);
};

} // namespace Kiv_v4
