#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "kiv/path.h"
#include "kiv/pathSegment.h"

#include "nameBatch.h"
#include "splitting.h"

namespace Kiv_v4::detail {

/// The number of components that `text` writes.
[[nodiscard]] inline std::size_t componentCount(std::string_view text, char separator) noexcept
{
    if (separator == 0) {
        return 1;
    }
    text = lstripped(text, separator);
    // A separator at the end starts no component.
    return text.empty()
               ? 0
               : static_cast<std::size_t>(std::count(text.begin(), text.end() - 1, separator)) + 1;
}

/// Passes the components that `text` writes to `take`, in order; see the constructor of
/// `PathSegment` from a text.
template <class Take>
void forEachComponent(std::string_view text, char separator, Take take)
{
    NameBatch names;
    forEachPiece(lstripped(text, separator), separator, [&](std::string_view name) {
        if (names.full()) {
            names.intern(take);
        }
        names.add(name);
    });
    names.intern(take);
}

/// The length of the text of `segment`.
[[nodiscard]] inline std::size_t textSize(const PathSegmentView& segment) noexcept
{
    auto size = segment.separator() == 0 ? std::size_t{0} : segment.size();
    for (const auto& component : segment) {
        size += component.string().size();
    }
    return size;
}

/// Writes `name` to `out` and returns its end. Most names are short: both ends are written as whole
/// words, which may overlap.
inline char* writeName(char* out, const std::string& name) noexcept
{
    const auto size = name.size();
    const auto* const from = name.data();
    const auto writeEnds = [&](std::size_t word) {
        std::memcpy(out, from, word);
        std::memcpy(out + size - word, from + size - word, word);
    };
    if (size > 16) {
        std::memcpy(out, from, size);
    } else if (size >= 8) {
        writeEnds(8);
    } else if (size >= 4) {
        writeEnds(4);
    } else {
        std::copy(from, from + size, out);
    }
    return out + size;
}

/// Writes each component to `out`, preceded by the separator unless that is 0, and returns the end
/// of what it wrote, `textSize(segment)` characters.
inline char* writeText(char* out, const PathSegmentView& segment) noexcept
{
    for (const auto& component : segment) {
        if (segment.separator() != 0) {
            *out++ = segment.separator();
        }
        out = writeName(out, component.string());
    }
    return out;
}

/// The texts of all segments of `path` with `between` between each two.
[[nodiscard]] inline std::string joinedText(const Path& path, std::string_view between = {})
{
    const auto count = path.nbSegments();
    auto size = count == 0 ? std::size_t{0} : (count - 1) * between.size();
    for (std::size_t i = 0; i != count; ++i) {
        size += textSize(path.segment(i));
    }
    std::string text(size, '\0');
    auto* out = text.data();
    for (std::size_t i = 0; i != count; ++i) {
        if (i != 0) {
            out = std::copy(between.begin(), between.end(), out);
        }
        out = writeText(out, path.segment(i));
    }
    return text;
}

} // namespace Kiv_v4::detail
