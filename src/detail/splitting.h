#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Kiv_v4::detail {

/// `s` without its leading characters equal to `c`; all of `s` when `c` is 0.
[[nodiscard]] inline std::string_view lstripped(std::string_view s, char c) noexcept
{
    if (c != 0) {
        s.remove_prefix(std::min(s.find_first_not_of(c), s.size()));
    }
    return s;
}

/// Passes each piece of `s` between two occurrences of `separator` (a character or a non-empty
/// text) to `take`, in order. A trailing separator makes no empty last piece.
template <class Separator, class Take>
void forEachPiece(std::string_view s, Separator separator, std::size_t separatorSize, Take take)
{
    for (std::size_t position = 0; position < s.size();) {
        const auto end = std::min(s.find(separator, position), s.size());
        take(s.substr(position, end - position));
        position = end + separatorSize;
    }
}

/// The pieces of `s` at the character `c`, where 0 separates nothing.
template <class Take>
void forEachPiece(std::string_view s, char c, Take take)
{
    if (c == 0) {
        take(s);
    } else {
        forEachPiece(s, c, 1, take);
    }
}

/// The pieces of `s` at the text `separator`, where the empty text separates nothing.
template <class Take>
void forEachPiece(std::string_view s, std::string_view separator, Take take)
{
    if (separator.empty()) {
        take(s);
    } else {
        forEachPiece(s, separator, separator.size(), take);
    }
}

} // namespace Kiv_v4::detail
