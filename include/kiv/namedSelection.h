#pragma once

#include <memory>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4 {

class Selection;

/// Selections that plug-ins leave for each other, or for themselves, under a name: plain ones,
/// which tell nobody of their changes.
///
/// **Lifetime.** A selection is held until it is removed, at the latest until the library is
/// unloaded. Before a run-time goes, the selections that may hold its items are cleared or removed.
class KIV_EXPORT NamedSelection
{
public:
    NamedSelection() = delete;

    /// The selection of that name, made empty when there is none. The reference is good until the
    /// name is removed.
    [[nodiscard]] static const std::shared_ptr<Selection>& get(const std::string& name);

    /// Lets go of the selection of that name, if there is one.
    static void remove(const std::string& name);
};

} // namespace Kiv_v4
