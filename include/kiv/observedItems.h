#pragma once

#include <cstddef>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"

namespace Kiv_v4 {

/// The observers of one item, registered with `Transform3d`, `Camera`, `Light` or `Attributes`: for
/// tools that look for forgotten observers.
struct ObservedItem
{
    const char* interfaceName; ///< The class that they are registered with.
    Path path;                 ///< The item's path when the first of them was added.
    std::size_t nbObservers;   ///< The living ones; 0 if all died without being removed.
};

/// Returns the items with observers, class by class, in no particular order. An item stays in the
/// list until its last observer is removed, even if all died, or until its run-time is
/// unregistered.
///
/// **Cost:** linear in the number of observers.
[[nodiscard]] KIV_EXPORT std::vector<ObservedItem> observedItems();

} // namespace Kiv_v4
