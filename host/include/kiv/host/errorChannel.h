#pragma once

#include <functional>
#include <memory>

#include "kiv/export.h"
#include "kiv/log.h"

namespace Kiv_v4::host {

/// Gives a host what the library writes to its log, beside the record on the standard error stream:
/// above all the exceptions of observers, which are swallowed and which nobody else hears of.
///
///     const host::ErrorChannel errors([&](const LogRecord& record) {
///         statusBar.show(record.message);
///     });
///
/// Any number of channels may be open; each is given every record, in the order in which they were
/// made. What `receive` throws is written to the log and reaches nobody; what is logged while it
/// runs goes to the standard error stream alone. A channel may be closed while it receives.
class KIV_EXPORT ErrorChannel
{
public:
    /// Takes one record. Must not throw.
    using Receive = std::function<void(const LogRecord&)>;

    explicit ErrorChannel(Receive receive);
    ErrorChannel(const ErrorChannel&) = delete;
    ErrorChannel& operator=(const ErrorChannel&) = delete;
    ~ErrorChannel();

private:
    const std::shared_ptr<Receive> _receive;
};

} // namespace Kiv_v4::host
