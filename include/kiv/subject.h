#pragma once

#include <cstddef>
#include <memory>
#include <set>

#include "kiv/export.h"
#include "kiv/observer.h"

namespace Kiv_v4 {

class Notification;

/// A source of notifications, such as the scene, a selection or one item's transform.
///
///     class Repaint : public Observer
///     {
///         void operator()(const Notification& notification) override { ... }
///     };
///     const auto repaint = std::make_shared<Repaint>(); // kept by its owner
///     subject.addObserver(repaint);
///
/// **Order.** The subject calls observers one after another, in an order that depends on the memory
/// addresses of their ownership records: neither the order in which they were added, nor the same
/// in every run of the program. Observers must not rely on the order.
///
/// **Lifetime.** The subject refers to its observers weakly and keeps one alive only during a call
/// to it. It no longer calls an observer that has died, and drops its entry at the next occasion.
/// Observers are not notified when their subject dies. Observers belong to one subject object: they
/// are neither copied nor moved nor assigned with it.
///
/// **Reentrancy.** While it notifies, the subject walks its own set, not a copy. From inside a
/// notification an observer may
/// - add observers; whether they still receive this notification is unspecified;
/// - release the last owner of another observer, or its own: observers that were not called yet are
///   then not called;
/// - ask `hasObserver` and `nbObservers`;
/// - change the subject again, or notify: every observer receives the inner notification before the
///   outer one continues, so observers late in the order receive the two in reverse;
/// - open a `NotificationGuard`: the outer notification is delivered completely; changes under the
///   guard are delivered when it closes.
///
/// It must not, on pain of undefined behaviour,
/// - remove itself or any other observer from the subject: release the observer, or remove it after
///   the notification;
/// - notify again, or ask `nbObservers`, in the destructor of an observer that was released during
///   the notification;
/// - destroy the subject.
///
/// **Errors.** If an observer throws an exception derived from `std::exception`, the subject writes
/// it to the diagnostic log, swallows it and calls the other observers. Any other exception ends
/// the notification and passes through `notify`; the later observers are not called.
///
/// **Threads.** Use a subject and its observers on the host's main thread.
///
/// **Cost.** Adding, removing and finding an observer are logarithmic in the number of observers.
/// Notifying is linear in that number, and allocates nothing unless it finds observers that have
/// died.
class KIV_EXPORT Subject
{
public:
    Subject();

    /// Observers are never copied or moved: a new copy has none, an assigned-to subject keeps its
    /// own.
    Subject(const Subject&);
    Subject(Subject&&) noexcept;
    Subject& operator=(const Subject&);
    Subject& operator=(Subject&&) noexcept;
    virtual ~Subject();

    /// Registers `obs`, which must not be null. Returns false if it is already registered.
    bool addObserver(const std::shared_ptr<Observer>& obs);

    /// Removes `obs`. Returns false if it was not registered.
    bool removeObserver(const std::shared_ptr<Observer>& obs);

    /// Whether `obs` is registered.
    [[nodiscard]] bool hasObserver(const std::shared_ptr<Observer>& obs) const;

    /// The number of living observers. Linear in the number of observers, since it forgets those
    /// that died.
    [[nodiscard]] std::size_t nbObservers() const;

    /// Whether there is a living observer. Forgets the dead ones that it finds before the first
    /// living one, so that repeated calls while observers die are linear in their number
    /// altogether.
    [[nodiscard]] bool hasObservers() const;

    /// Calls every living observer with `notification`. While notifications are being gathered,
    /// throws `std::logic_error` and calls none.
    virtual void notify(const Notification& notification);

    // The functions that `NotificationGuard` calls. Subjects that can deliver many changes as one
    // composite notification override all three and gather in between.

    /// Whether notifications are being gathered instead of delivered. By default false.
    [[nodiscard]] virtual bool inCompositeNotification() const;

    /// Begins to gather. By default does nothing.
    virtual void beginNotificationGuard();

    /// Delivers the gathered changes. By default does nothing.
    virtual void endNotificationGuard();

protected:
    /// Weak references, ordered by owner.
    using Observers = std::set<std::weak_ptr<Observer>, std::owner_less<std::weak_ptr<Observer>>>;

    /// Forgets the observers of `expired`.
    void cleanObservers(const Observers& expired);

private:
    mutable Observers _observers;
};

} // namespace Kiv_v4
