#pragma once

#include <memory>

#include "kiv/export.h"

namespace Kiv_v4 {

class Notification;

/// What a subject calls with its notifications.
///
/// **Lifetime.** Whoever makes an observer keeps it by shared pointer for as long as it shall
/// listen; subjects keep weak references only. Releasing it is enough to stop listening, but
/// not to have its code unloaded (`RunTimeRegistration`).
class KIV_EXPORT Observer
{
public:
    using Ptr = std::shared_ptr<Observer>;

    Observer();
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    virtual ~Observer();

    /// Takes a notification; what it may do meanwhile is told at `Subject`. By default does
    /// nothing.
    virtual void operator()(const Notification& notification);
};

} // namespace Kiv_v4
