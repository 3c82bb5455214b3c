#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include "kiv/export.h"
#include "kiv/pathComponent.h"
#include "kiv/pathSegment.h"

namespace Kiv_v4::detail {

/// The data that the copies of a path share, in one piece of memory: this head, then the path's
/// components, then a mark per segment. `PathBuilder` makes it.
///
/// A body may be linked to the body of its parent, which it keeps alive: it then owns only its last
/// component and shows those of its parent without owning them, so that making and dropping the
/// paths of children counts one reference, not one per component.
///
/// Invariants:
/// - there is at least one segment;
/// - the marks' ends do not decrease, and the last one is the number of components;
/// - a linked body has the segments of its parent and one component more in the last of them;
/// - the chain of parents has at most `kMostLinks` bodies, so that a path keeps only so many others
///   alive;
/// - once a path holds a body, only two things in it change: the number of its holders, and the
///   vector of segments, which the first call of `segments` makes.
class PathBody
{
public:
    using Segments = std::vector<PathSegment>;

    struct Mark
    {
        std::size_t end; ///< The number of components up to the end of the segment.
        Rtid runTimeId;
        std::int32_t separator; ///< A character, widened so that the mark has no padding.
    };
    static_assert(std::has_unique_object_representations_v<Mark>);

    static constexpr std::uint32_t kMostLinks = 15;

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
                mark.runTimeId, static_cast<char>(mark.separator)};
    }

    [[nodiscard]] std::uint32_t hash() const noexcept { return _hash; }

    /// The linked body of the first `size` components, which must be fewer than all, in their
    /// segments; null if there is no such link.
    [[nodiscard]] const PathBody* linkedHead(std::size_t size) const noexcept
    {
        const auto* body = this;
        // An empty last segment is part of the parent, and not of the head.
        while (body && body->_size != size) {
            body = body->segment(body->_nbSegments - 1).size() > 1 ? body->_parent : nullptr;
        }
        return body;
    }

    /// Whether the segments are equal, pairwise.
    bool operator==(const PathBody& other) const noexcept
    {
        // Each name has one record, so equal components are equal byte for byte.
        return _size == other._size && _nbSegments == other._nbSegments &&
               std::memcmp(this + 1, &other + 1,
                           _size * sizeof(PathComponent) + _nbSegments * sizeof(Mark)) == 0;
    }

    /// The vector of segments. If several threads make it at once, all get the same one.
    [[nodiscard]] const Segments& segments() const
    {
        const auto* const made = _segments.load(std::memory_order_acquire);
        return made ? *made : makeSegments();
    }

    void retain() const noexcept { _holders.fetch_add(1, std::memory_order_relaxed); }

    void release() const noexcept
    {
        if (wasLast()) {
            destroy();
        }
    }

private:
    friend class PathBuilder;

    PathBody() = default;
    ~PathBody() = default;

    /// Counts one holder less. Returns whether none is left.
    [[nodiscard]] bool wasLast() const noexcept
    {
        // The only holder skips the decrement, which costs more than the load.
        return _holders.load(std::memory_order_acquire) == 1 ||
               _holders.fetch_sub(1, std::memory_order_acq_rel) == 1;
    }

    KIV_EXPORT const Segments& makeSegments() const;
    KIV_EXPORT void destroy() const noexcept;

    std::uint32_t _size = 0;
    std::uint32_t _nbSegments = 0;
    std::uint32_t _hash = 0;
    std::uint32_t _nbLinks = 0;        ///< The number of bodies that `_parent` leads to.
    const PathBody* _parent = nullptr; ///< Held; null for a body that owns all its components.
    mutable std::atomic<const Segments*> _segments = nullptr;
    mutable std::atomic<std::size_t> _holders = 1;
};
static_assert(sizeof(PathBody) % alignof(PathComponent) == 0);
static_assert(sizeof(PathComponent) % alignof(PathBody::Mark) == 0);

} // namespace Kiv_v4::detail
