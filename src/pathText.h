#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "kiv/pathSegment.h"

namespace Kiv_v4::detail {

/// The components that `text` writes; see the constructor of `PathSegment` from a text.
[[nodiscard]] PathSegment::Components componentsOf(std::string_view text, char separator);

/// The length of the text of `segment`.
[[nodiscard]] inline std::size_t textSize(const PathSegment& segment) noexcept
{
    auto size = segment.separator() == 0 ? std::size_t{0} : segment.size();
    for (const auto& component : segment) {
        size += component.string().size();
    }
    return size;
}

/// Writes each component to `out`, preceded by the separator unless that is 0, and returns the end
/// of what it wrote, `textSize(segment)` characters.
inline char* writeText(char* out, const PathSegment& segment) noexcept
{
    for (const auto& component : segment) {
        if (segment.separator() != 0) {
            *out++ = segment.separator();
        }
        out = std::copy(component.string().begin(), component.string().end(), out);
    }
    return out;
}

/// The texts of all segments with `between` between each two.
template <class Segments>
[[nodiscard]] std::string joinedText(const Segments& segments, std::string_view between = {})
{
    std::size_t size = 0;
    for (const auto& segment : segments) {
        size += textSize(segment) + (&segment == &*segments.begin() ? 0 : between.size());
    }
    std::string text(size, '\0');
    auto* out = text.data();
    for (const auto& segment : segments) {
        if (&segment != &*segments.begin()) {
            out = std::copy(between.begin(), between.end(), out);
        }
        out = writeText(out, segment);
    }
    return text;
}

} // namespace Kiv_v4::detail
