#pragma once

#include <string>

#include "kiv/pathSegment.h"

namespace Kiv_v4::detail {

/// The length of the text that `appendText` adds.
[[nodiscard]] inline std::size_t textSize(const PathSegment& segment) noexcept
{
    auto size = segment.separator() == 0 ? std::size_t{0} : segment.size();
    for (const auto& component : segment) {
        size += component.string().size();
    }
    return size;
}

/// Adds each component to `text`, preceded by the separator unless that is 0.
inline void appendText(std::string& text, const PathSegment& segment)
{
    for (const auto& component : segment) {
        if (segment.separator() != 0) {
            text += segment.separator();
        }
        text += component.string();
    }
}

/// The texts of all segments with `between` between each two.
template <class Segments>
[[nodiscard]] std::string joinedText(const Segments& segments, const std::string& between = {})
{
    std::size_t size = 0;
    for (const auto& segment : segments) {
        size += textSize(segment) + between.size();
    }
    std::string text;
    text.reserve(size);
    for (const auto& segment : segments) {
        if (&segment != &*segments.begin()) {
            text += between;
        }
        appendText(text, segment);
    }
    return text;
}

} // namespace Kiv_v4::detail
