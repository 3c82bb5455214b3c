#pragma once

#include "kiv/export.h"

namespace Kiv_v4 {

class Subject;

/// Gathers the changes of a subject in a scope, so that its observers get one notification, at the
/// end of the scope:
///
///     {
///         const NotificationGuard guard(*selection);
///         for (const auto& item : items) {
///             selection->append(item);
///         }
///     } // observers get one composite notification
///
/// Guards nest: only the outermost one on a subject delivers. A guard has no effect on a subject
/// that cannot gather.
///
/// **Lifetime.** The subject must outlive the guard.
class KIV_EXPORT NotificationGuard
{
public:
    explicit NotificationGuard(Subject& subject);
    NotificationGuard(const NotificationGuard&) = delete;
    NotificationGuard& operator=(const NotificationGuard&) = delete;

    /// Delivers, even when an exception ends the scope. An exception from the delivery terminates
    /// the process, since destructors must not throw.
    ~NotificationGuard();

private:
    Subject* _subject; ///< Null under an outer guard.
};

} // namespace Kiv_v4
