#pragma once

#include <cstddef>
#include <memory>
#include <set>

#include "kiv/export.h"
#include "kiv/observer.h"

namespace Kiv_v4 {

class Notification;

/// Something that tells observers what happens to it: the scene, a selection, one item's transform.
///
///     class Repaint : public Observer
///     {
///         void operator()(const Notification& notification) override { ... }
///     };
///     const auto repaint = std::make_shared<Repaint>(); // kept by its owner
///     subject.addObserver(repaint);
///
/// **Order.** Observers are called one after another, in an order that depends on where in memory
/// their ownership records lie: neither the order in which they were added, nor the same in every
/// run of the program. Observers that depend on each other's work cannot be built on it.
///
/// **Lifetime.** The subject refers to its observers weakly and never keeps one alive, but for the
/// duration of a call to it. An observer that has died is no longer called and its entry is dropped
/// at the next occasion. Observers are not told that their subject dies. Observers belong to one
/// subject object: they are neither copied nor moved nor assigned with it.
///
/// **Reentrancy.** The subject walks its own set while it notifies, not a copy. From inside a
/// notification an observer may
/// - add observers; whether this same notification still reaches them is open;
/// - release other observers' last owners, or its own: those that were not reached yet are not
///   called any more;
/// - ask `hasObserver` and `nbObservers`;
/// - change the subject again, or notify: the inner notification reaches every observer before the
///   outer one goes on, so that observers late in the order see the two in reverse;
/// - open a `NotificationGuard`: the outer notification is delivered to the end, what happens under
///   the guard is delivered when it closes.
///
/// It must not, on pain of undefined behaviour,
/// - remove itself or any other observer from the subject: release the observer, or remove it after
///   the notification;
/// - notify again, or ask `nbObservers`, in the destructor of an observer that was released during
///   the notification;
/// - destroy the subject.
///
/// **Errors.** An observer that throws does not keep the others from being called: exceptions
/// derived from `std::exception` are written to the diagnostic log and swallowed. Any other
/// exception ends the notification and reaches the caller of `notify`; the later observers are not
/// called.
///
/// **Threads.** A subject and its observers belong to the host's main thread.
///
/// **Cost.** Adding, removing and finding an observer are logarithmic in the number of observers.
/// Notifying is linear in it, and allocates nothing unless it finds observers that have died.
class KIV_EXPORT Subject
{
public:
    Subject();

    /// A copy, whether made or assigned to, has the observers that it had before: at first none.
    Subject(const Subject&);
    Subject(Subject&&) noexcept;
    Subject& operator=(const Subject&);
    Subject& operator=(Subject&&) noexcept;
    virtual ~Subject();

    /// Lets `obs`, which is not null, hear of what happens from now on; false when it does so
    /// already.
    bool addObserver(const std::shared_ptr<Observer>& obs);

    /// False when `obs` was not among the observers.
    bool removeObserver(const std::shared_ptr<Observer>& obs);

    /// Whether `obs` hears of what happens.
    [[nodiscard]] bool hasObserver(const std::shared_ptr<Observer>& obs) const;

    /// The number of living observers. Linear in the number of observers, since those that died are
    /// forgotten on this occasion.
    [[nodiscard]] std::size_t nbObservers() const;

    /// Whether there is a living observer. Forgets those that died up to the first that lives, so
    /// that asking again and again while observers go is linear in their number on the whole.
    [[nodiscard]] bool hasObservers() const;

    /// Calls every living observer with `notification`. Throws `std::logic_error`, and calls none,
    /// while notifications are being gathered.
    virtual void notify(const Notification& notification);

    // The composite: what `NotificationGuard` works with. Subjects that can deliver the news of
    // many changes as one composite notification override the three and gather in between.

    /// Whether notifications are being gathered instead of delivered. By default false.
    [[nodiscard]] virtual bool inCompositeNotification() const;

    /// Begins to gather. By default does nothing.
    virtual void beginNotificationGuard();

    /// Delivers what was gathered. By default does nothing.
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
