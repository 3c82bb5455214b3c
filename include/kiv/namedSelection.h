#pragma once

#include <memory>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4 {

class Selection;

/// Selections that plug-ins share under a name. They are plain selections, which have no observers.
///
/// **Lifetime.** The library holds a selection until `remove`, at the latest until it is unloaded.
/// Before a run-time is unregistered, its owner must clear or remove the selections that may hold
/// its items.
class KIV_EXPORT NamedSelection
{
public:
    NamedSelection() = delete;

    /// Returns the selection of that name and makes an empty one if there is none. The reference is
    /// valid until the name is removed.
    [[nodiscard]] static const std::shared_ptr<Selection>& get(const std::string& name);

    /// Releases the selection of that name, if there is one.
    static void remove(const std::string& name);
};

} // namespace Kiv_v4
