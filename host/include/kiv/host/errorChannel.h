#pragma once

#include <functional>
#include <memory>

#include "kiv/export.h"
#include "kiv/log.h"

namespace Kiv_v4::host {

/// Passes the records of the library's log to a host, in addition to the standard error stream:
/// above all the exceptions of observers, which the library swallows.
///
///     const host::ErrorChannel errors([&](const LogRecord& record) {
///         statusBar.show(record.message);
///     });
///
/// Any number of channels may be open; each gets every record, in the order in which the channels
/// were made. Exceptions of `receive` are written to the log and swallowed; records made while it
/// runs only go to the standard error stream. A channel may be closed while it receives.
class KIV_EXPORT ErrorChannel
{
public:
    /// Called with one record. Should not throw.
    using Receive = std::function<void(const LogRecord&)>;

    explicit ErrorChannel(Receive receive);
    ErrorChannel(const ErrorChannel&) = delete;
    ErrorChannel& operator=(const ErrorChannel&) = delete;
    ~ErrorChannel();

private:
    const std::shared_ptr<Receive> _receive;
};

} // namespace Kiv_v4::host
