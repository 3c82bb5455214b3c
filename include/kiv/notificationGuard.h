#pragma once

#include "kiv/export.h"

namespace Kiv_v4 {

class Subject;

/// Gathers what happens to a subject in a scope, so that its observers hear of it once, when the
/// scope ends:
///
///     {
///         const NotificationGuard guard(*selection);
///         for (const auto& item : items) {
///             selection->append(item);
///         }
///     } // observers get one composite notification
///
/// Guards nest: only the outermost on a subject delivers. On a subject that cannot gather a guard
/// has no effect.
///
/// **Lifetime.** The subject outlives the guard.
class KIV_EXPORT NotificationGuard
{
public:
    explicit NotificationGuard(Subject& subject);
    NotificationGuard(const NotificationGuard&) = delete;
    NotificationGuard& operator=(const NotificationGuard&) = delete;

    /// Delivers, also when an exception ends the scope. An exception that the delivery lets out
    /// terminates the process, since a destructor cannot let it pass.
    ~NotificationGuard();

private:
    Subject* _subject; ///< Null under an outer guard.
};

} // namespace Kiv_v4
