#include "kiv/subject.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

#include "kiv/log.h"
#include "kiv/notification.h"

#include "detail/weakPtrSet.h"

namespace Kiv_v4 {

namespace {

// The place in the log for a swallowed exception. Fixed, so that logs can be searched for it.
constexpr auto kLogFile = "src/subject";
constexpr int kLogLine = 82;

/// Counts entries erased from any subject, so that a walk notices that its current entry may be
/// erased: one count for all, since a subject has no state except its observers.
std::size_t nbErased = 0;

void deliver(const Notification& notification, Observer& observer)
{
    try {
        observer(notification);
    } catch (const std::exception& error) {
        log("notify", kLogFile, kLogLine,
            std::string("Subject notification caught and silenced exception ") + error.what() +
                "\n");
    }
}

/// The entry after that of a called observer, whose own entry may be erased already or die with it.
template <class Observers>
auto entryAfter(Observers& observers, Observer::Ptr called)
{
    const typename Observers::key_type place = called;
    called.reset();
    return observers.upper_bound(place);
}

} // namespace

Subject::Subject() = default;

Subject::Subject(const Subject& /*other*/) {}

Subject::Subject(Subject&& /*other*/) noexcept {}

Subject& Subject::operator=(const Subject& /*other*/)
{
    return *this;
}

Subject& Subject::operator=(Subject&& /*other*/) noexcept
{
    return *this;
}

Subject::~Subject() = default;

bool Subject::addObserver(const std::shared_ptr<Observer>& obs)
{
    return _observers.insert(obs).second;
}

bool Subject::removeObserver(const std::shared_ptr<Observer>& obs)
{
    const auto isErased = _observers.erase(obs) != 0;
    nbErased += isErased ? 1 : 0;
    return isErased;
}

bool Subject::hasObserver(const std::shared_ptr<Observer>& obs) const
{
    return _observers.count(obs) != 0;
}

std::size_t Subject::nbObservers() const
{
    detail::eraseExpired(_observers);
    return _observers.size();
}

bool Subject::hasObservers() const
{
    while (!_observers.empty() && _observers.begin()->expired()) {
        _observers.erase(_observers.begin());
    }
    return !_observers.empty();
}

void Subject::notify(const Notification& notification)
{
    if (inCompositeNotification()) {
        throw std::logic_error(
            "Illegal call to Subject::notify() inside a composite notification.");
    }
    Observers expired;
    for (auto entry = _observers.begin(); entry != _observers.end();) {
        auto observer = entry->lock();
        if (!observer) {
            expired.insert(*entry++);
            continue;
        }
        const auto nbErasedBefore = nbErased;
        deliver(notification, *observer);
        if (nbErased == nbErasedBefore && observer.use_count() != 1) {
            ++entry;
        } else {
            entry = entryAfter(_observers, std::move(observer));
        }
    }
    cleanObservers(expired);
}

bool Subject::inCompositeNotification() const
{
    return false;
}

void Subject::beginNotificationGuard() {}

void Subject::endNotificationGuard() {}

void Subject::cleanObservers(const Observers& expired)
{
    for (const auto& entry : expired) {
        nbErased += _observers.erase(entry);
    }
}

} // namespace Kiv_v4
