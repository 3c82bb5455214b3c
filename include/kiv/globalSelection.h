#pragma once

#include <memory>

#include "kiv/export.h"

namespace Kiv_v4 {

class ObservableSelection;

/// The selection that a host designates as the one its users see and its tools work on.
///
/// **Lifetime.** The selection is held until it is replaced with null, at the latest until the
/// library is unloaded. A host clears it before a run-time goes whose items it may hold.
class KIV_EXPORT GlobalSelection
{
public:
    GlobalSelection() = delete;

    /// Installs the selection or, with null, clears the place. Throws `std::invalid_argument`, and
    /// keeps the selection that is there, when there is one and `sel` is not null.
    static void initializeInstance(const std::shared_ptr<ObservableSelection>& sel);

    /// The selection installed now, null when there is none.
    [[nodiscard]] static const std::shared_ptr<ObservableSelection>& get();
};

} // namespace Kiv_v4
