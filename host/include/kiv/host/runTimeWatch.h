#pragma once

#include <functional>
#include <memory>

#include "kiv/export.h"
#include "kiv/runTimeEvent.h"

namespace Kiv_v4::host {

/// Tells a host that run-times come and go, for as long as it lives.
///
///     const host::RunTimeWatch watch([&](RunTimeEvent event, Rtid runTimeId) {
///         if (event == RunTimeEvent::Leaving) {
///             history->dropRunTime(runTimeId);
///         }
///     });
///
/// Any number may live; they are called in the order in which they were made. What `receive` throws
/// is written to the log: neither coming nor leaving can be refused.
class KIV_EXPORT RunTimeWatch
{
public:
    /// Told of what happens to a run-time.
    using Receive = std::function<void(RunTimeEvent, Rtid)>;

    explicit RunTimeWatch(Receive receive);
    RunTimeWatch(const RunTimeWatch&) = delete;
    RunTimeWatch& operator=(const RunTimeWatch&) = delete;
    ~RunTimeWatch();

private:
    const std::shared_ptr<Receive> _receive;
};

} // namespace Kiv_v4::host
