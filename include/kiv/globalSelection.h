#pragma once

#include <memory>

#include "kiv/export.h"

namespace Kiv_v4 {

class ObservableSelection;

/// The selection that a host designates as the one its users see and its tools work on.
///
/// **Lifetime.** The library holds the selection until `initializeInstance(nullptr)` clears the
/// place, at the latest until it is unloaded. Before a run-time is unregistered, the host must
/// remove the run-time's items from the selection or clear the place.
class KIV_EXPORT GlobalSelection
{
public:
    GlobalSelection() = delete;

    /// Installs the selection or, with null, clears the place. Throws `std::invalid_argument` and
    /// keeps the installed selection if there is one and `sel` is not null.
    static void initializeInstance(const std::shared_ptr<ObservableSelection>& sel);

    /// Returns the installed selection; null if there is none.
    [[nodiscard]] static const std::shared_ptr<ObservableSelection>& get();
};

} // namespace Kiv_v4
