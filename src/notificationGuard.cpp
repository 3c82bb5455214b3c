#include "kiv/notificationGuard.h"

#include "kiv/subject.h"

namespace Kiv_v4 {

NotificationGuard::NotificationGuard(Subject& subject)
    : _subject(subject.inCompositeNotification() ? nullptr : &subject)
{
    if (_subject) {
        _subject->beginNotificationGuard();
    }
}

NotificationGuard::~NotificationGuard()
{
    if (_subject) {
        _subject->endNotificationGuard();
    }
}

} // namespace Kiv_v4
