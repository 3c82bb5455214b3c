#pragma once

#include <cstdint>
#include <functional>

#include "kiv/export.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

/// What happens to a run-time in the registry (`RunTimeMgr`).
enum class RunTimeEvent : std::uint8_t {
    Registered, ///< It has an id; its handlers may come later.
    Installed,  ///< Its hierarchy handler was set: its items can be asked for.
    Leaving     ///< It is about to be unregistered; its handlers are there for the last time.
};

/// What hears of the events. It must not throw, and neither registers nor unregisters run-times.
using RunTimeListener = std::function<void(RunTimeEvent, Rtid)>;

/// Lets `listener`, one for the process, hear of run-times that come and go; an empty one ends
/// that. Hosts use `host::RunTimeWatch`, of which there may be many.
KIV_EXPORT void setRunTimeListener(RunTimeListener listener);

} // namespace Kiv_v4
