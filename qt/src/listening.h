#pragma once

#include <functional>
#include <memory>

#include "kiv/notification.h"
#include "kiv/observer.h"

namespace Kiv_v4::qt::detail {

/// Hands notifications to a function.
class Listening : public Observer
{
public:
    explicit Listening(std::function<void(const Notification&)> work) : _work(std::move(work)) {}

    void operator()(const Notification& notification) override { _work(notification); }

private:
    const std::function<void(const Notification&)> _work;
};

/// Returns an observer that calls `work` with each notification of class `Wanted`.
template <class Wanted, class Work>
[[nodiscard]] Observer::Ptr listeningTo(Work work)
{
    return std::make_shared<Listening>([work](const Notification& notification) {
        if (const auto* wanted = dynamic_cast<const Wanted*>(&notification)) {
            work(*wanted);
        }
    });
}

} // namespace Kiv_v4::qt::detail
