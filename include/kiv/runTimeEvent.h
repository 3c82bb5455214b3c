#pragma once

#include <cstdint>
#include <functional>

#include "kiv/export.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

/// An event of a run-time in the registry (`RunTimeMgr`).
enum class RunTimeEvent : std::uint8_t {
    Registered, ///< It has an id; its handlers may be set later.
    Installed,  ///< Its hierarchy handler was set: clients can reach its items.
    Leaving     ///< It is about to be unregistered; its handlers are still set.
};

/// Called with each event. It must not throw, and must neither register nor unregister run-times.
using RunTimeListener = std::function<void(RunTimeEvent, Rtid)>;

/// Sets the listener of the process; an empty function removes it. Hosts use `host::RunTimeWatch`,
/// of which there may be many.
KIV_EXPORT void setRunTimeListener(RunTimeListener listener);

} // namespace Kiv_v4
