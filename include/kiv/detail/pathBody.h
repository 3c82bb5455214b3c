#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "kiv/export.h"
#include "kiv/pathComponent.h"
#include "kiv/pathSegment.h"

namespace Kiv_v4::detail {

/// What the copies of a path share, in one piece of memory: this head, then the path's components,
/// then a mark per segment. `PathBuilder` makes it.
///
/// Invariants:
/// - there is at least one segment;
/// - the marks' ends do not fall, and the last one is the number of components;
/// - once a path holds a body nothing in it changes but the number of its holders and the vector of
///   segments, which is made when first asked for and then stays.
class PathBody
{
public:
    using Segments = std::vector<PathSegment>;

    struct Mark
    {
        std::size_t end; ///< The number of components up to the end of the segment.
        Rtid runTimeId;
        char separator;

        bool operator==(const Mark& other) const noexcept
        {
            return end == other.end && runTimeId == other.runTimeId && separator == other.separator;
        }
    };

    PathBody(const PathBody&) = delete;
    PathBody& operator=(const PathBody&) = delete;

    [[nodiscard]] std::size_t size() const noexcept { return _size; }
    [[nodiscard]] const PathComponent* begin() const noexcept
    {
        return reinterpret_cast<const PathComponent*>(this + 1);
    }
    [[nodiscard]] const PathComponent* end() const noexcept { return begin() + _size; }

    [[nodiscard]] std::size_t nbSegments() const noexcept { return _nbSegments; }
    [[nodiscard]] const Mark* marks() const noexcept
    {
        return reinterpret_cast<const Mark*>(end());
    }

    [[nodiscard]] PathSegmentView segment(std::size_t index) const noexcept
    {
        const auto& mark = marks()[index];
        return {begin() + (index == 0 ? 0 : marks()[index - 1].end), begin() + mark.end,
                mark.runTimeId, mark.separator};
    }

    /// Whether the segments are equal, pairwise.
    bool operator==(const PathBody& other) const noexcept
    {
        return _size == other._size && _nbSegments == other._nbSegments &&
               std::equal(begin(), end(), other.begin()) &&
               std::equal(marks(), marks() + _nbSegments, other.marks());
    }

    /// The vector of segments. Of several threads that come first, one makes what all are given.
    [[nodiscard]] const Segments& segments() const
    {
        const auto* const made = _segments.load(std::memory_order_acquire);
        return made ? *made : makeSegments();
    }

    void hold() const noexcept { _holders.fetch_add(1, std::memory_order_relaxed); }

    void letGo() const noexcept
    {
        // The only holder need not count down, which costs more than to look.
        if (_holders.load(std::memory_order_acquire) == 1 ||
            _holders.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            destroy();
        }
    }

private:
    friend class PathBuilder;

    PathBody() = default;
    ~PathBody() = default;

    KIV_EXPORT const Segments& makeSegments() const;
    KIV_EXPORT void destroy() const noexcept;

    std::size_t _size = 0;
    std::size_t _nbSegments = 0;
    mutable std::atomic<const Segments*> _segments = nullptr;
    mutable std::atomic<std::size_t> _holders = 1;
};
static_assert(sizeof(PathBody) % alignof(PathComponent) == 0);
static_assert(sizeof(PathComponent) % alignof(PathBody::Mark) == 0);

} // namespace Kiv_v4::detail
