#pragma once

#include <cstddef>
#include <string_view>

#include "kiv/export.h"

namespace Kiv_v4::host {

// Names and texts of items may contain any bytes. Code that shows or stores them as text must check
// them.

/// A character at the start of a text.
struct Utf8Character
{
    /// The character's code point.
    char32_t code;
    std::size_t length; ///< In bytes; 0 for bytes that are not UTF-8.
};

/// Returns the first character of `text`, which must not be empty.
[[nodiscard]] KIV_EXPORT Utf8Character firstCharacter(std::string_view text) noexcept;

/// Returns whether all of the text is UTF-8.
[[nodiscard]] KIV_EXPORT bool isUtf8(std::string_view text) noexcept;

} // namespace Kiv_v4::host
