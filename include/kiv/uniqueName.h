#pragma once

#include <functional>
#include <string>

#include "kiv/export.h"

namespace Kiv_v4 {

/// Returns `name` or, if `isTaken(name)`, `name` with the number at its end counted up (from 1 if
/// it has none) until `isTaken` is false: `cube`, `cube1`, `cube2`; `arm9`, `arm10`. For run-times
/// that make items whose names must differ from those of their siblings.
///
/// Cost: one call of `isTaken` per name tried.
[[nodiscard]] KIV_EXPORT std::string
uniqueName(const std::string& name, const std::function<bool(const std::string&)>& isTaken);

} // namespace Kiv_v4
