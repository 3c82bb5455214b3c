#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "terminal/output.h"

namespace app {

/// `json` as text: always valid, with U+FFFD for bytes that are no UTF-8, and safe to show on a
/// terminal. On one line unless `indent` is 0 or more.
[[nodiscard]] inline std::string jsonText(const nlohmann::ordered_json& json, const Output& output,
                                          int indent = -1)
{
    return json.dump(indent, ' ', output.isTerminal(),
                     nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace app
