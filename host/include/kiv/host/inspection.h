#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/observedItems.h"
#include "kiv/path.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4::host {

/// The present state of the library in this process, for reports of faults and for objects that
/// plug-ins left behind.
struct Inspection
{
    /// A run-time, or the handlers that are left of one.
    struct RunTime
    {
        Rtid id;                           ///< The run-time's.
        std::string name;                  ///< Empty if nothing is registered under the id.
        std::vector<std::string> handlers; ///< The kinds that are installed: `hierarchy`, ...
        std::vector<Path> gateways{};      ///< Where its items begin, at and under the root.
    };

    /// A subject of the whole process.
    struct Observed
    {
        std::string subject;     ///< `scene`, `global selection`, `attributes` or `visibility`.
        std::size_t nbObservers; ///< The living ones.
    };

    std::vector<RunTime> runTimes;           ///< By id.
    std::vector<Observed> subjects;          ///< Those that are installed.
    std::vector<ObservedItem> observedItems; ///< With their living observers.

    /// A line for each fault: observers that died without being removed, observers of missing
    /// items, handlers of unregistered run-times.
    std::vector<std::string> leftovers;

    std::size_t nbNames = 0;       ///< In the table of interned names.
    std::size_t nbItems = 0;       ///< At and under the root.
    std::size_t residentBytes = 0; ///< Of the process; 0 if the system does not say.
};

/// Returns the present state. Items and gateways are counted at and below `root`, which may be
/// null.
///
/// **Cost:** linear in the items at and under the root, and in the observers.
[[nodiscard]] KIV_EXPORT Inspection inspect(const SceneItem::Ptr& root);

} // namespace Kiv_v4::host
