#pragma once

#include <functional>
#include <memory>

#include "kiv/export.h"
#include "kiv/runTimeEvent.h"

namespace Kiv_v4::host {

/// Notifies a host, for as long as it lives, when run-times are registered and unregistered.
///
///     const host::RunTimeWatch watch([&](RunTimeEvent event, Rtid runTimeId) {
///         if (event == RunTimeEvent::Leaving) {
///             history->dropRunTime(runTimeId);
///         }
///     });
///
/// Any number of watches may exist; they are called in the order in which they were made.
/// Exceptions of `receive` are written to the log: it can prevent neither event.
class KIV_EXPORT RunTimeWatch
{
public:
    /// Called with each event of a run-time.
    using Receive = std::function<void(RunTimeEvent, Rtid)>;

    explicit RunTimeWatch(Receive receive);
    RunTimeWatch(const RunTimeWatch&) = delete;
    RunTimeWatch& operator=(const RunTimeWatch&) = delete;
    ~RunTimeWatch();

private:
    const std::shared_ptr<Receive> _receive;
};

} // namespace Kiv_v4::host
