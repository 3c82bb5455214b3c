#include "kiv/subject.h"

#include <stdexcept>
#include <string>

#include "kiv/log.h"
#include "kiv/notification.h"

#include "ownerOrdered.h"

namespace Kiv_v4 {

namespace {

// Where the log says that a silenced exception was caught. Fixed, for those who search logs for it.
constexpr auto kLogFile = "src/subject";
constexpr int kLogLine = 82;

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
    return _observers.erase(obs) != 0;
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

void Subject::notify(const Notification& notification)
{
    if (inCompositeNotification()) {
        throw std::logic_error(
            "Illegal call to Subject::notify() inside a composite notification.");
    }
    Observers expired;
    for (const auto& entry : _observers) {
        if (const auto observer = entry.lock()) {
            deliver(notification, *observer);
        } else {
            expired.insert(entry);
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
        _observers.erase(entry);
    }
}

} // namespace Kiv_v4
