#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/pathComponent.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

class PathSegment;

namespace detail {
class PathBuilder;
}

/// A view of a segment in a `PathSegment` or in a `Path`, valid for as long as that exists. Making
/// and copying a view costs nothing; a `PathSegment` made from it keeps the components.
class PathSegmentView
{
public:
    /// Walks the components.
    using const_iterator = const PathComponent*;
    using iterator = const_iterator;
    using value_type = PathComponent;

    /// A view of the components from `begin` up to `end`.
    PathSegmentView(const_iterator begin, const_iterator end, Rtid runTimeId,
                    char separator) noexcept
        : _begin(begin), _end(end), _runTimeId(runTimeId), _separator(separator)
    {}

    /// Deliberately implicit.
    PathSegmentView(const PathSegment& segment) noexcept;

    /// The run-time that the segment belongs to.
    [[nodiscard]] Rtid runTimeId() const noexcept { return _runTimeId; }
    /// The character in front of each name in text; 0 for none.
    [[nodiscard]] char separator() const noexcept { return _separator; }

    /// The number of components.
    [[nodiscard]] std::size_t size() const noexcept
    {
        return static_cast<std::size_t>(_end - _begin);
    }
    /// Whether there are no components.
    [[nodiscard]] bool empty() const noexcept { return _begin == _end; }

    /// The components in order.
    [[nodiscard]] const_iterator begin() const noexcept { return _begin; }
    [[nodiscard]] const_iterator end() const noexcept { return _end; }

private:
    const_iterator _begin;
    const_iterator _end;
    Rtid _runTimeId;
    char _separator;
};

/// The part of a path that belongs to one run-time: the names from the segment's root to its tip,
/// the run-time's id, and the character that separates the names in text (0 for none).
///
/// A segment is a value: only assignment changes it, and iteration yields constant components. It
/// may be empty.
class KIV_EXPORT PathSegment
{
public:
    /// Names in order.
    using Components = std::vector<PathComponent>;
    using const_iterator = Components::const_iterator;
    using iterator = const_iterator;
    using value_type = PathComponent;

    /// The segment that `text` writes: leading separators are dropped, then the rest is split at
    /// each separator. With `/`, `/world/a`, `//world/a` and `world/a` all give `world`, `a`; an
    /// empty name between two separators is kept, an empty name after the last separator is not.
    /// With separator 0 the whole text is one component.
    PathSegment(const std::string& text, Rtid runTimeId, char separator);

    /// The given components as they are; they may hold the separator character.
    PathSegment(const Components& components, Rtid runTimeId, char separator);
    PathSegment(Components&& components, Rtid runTimeId, char separator) noexcept;
    PathSegment(const PathComponent& component, Rtid runTimeId, char separator);

    /// A copy of the segment that the view shows.
    explicit PathSegment(const PathSegmentView& view);

    /// The run-time that the segment belongs to.
    [[nodiscard]] Rtid runTimeId() const noexcept { return _runTimeId; }
    /// The character in front of each name in text; 0 for none.
    [[nodiscard]] char separator() const noexcept { return _separator; }
    /// The names, from the segment's root to its tip.
    [[nodiscard]] const Components& components() const noexcept { return _components; }

    /// The number of components.
    [[nodiscard]] std::size_t size() const noexcept { return _components.size(); }
    /// Whether there are no components.
    [[nodiscard]] bool empty() const noexcept { return _components.empty(); }

    /// The components in order.
    [[nodiscard]] const_iterator begin() const noexcept { return _components.begin(); }
    [[nodiscard]] const_iterator end() const noexcept { return _components.end(); }
    [[nodiscard]] const_iterator cbegin() const noexcept { return _components.begin(); }
    [[nodiscard]] const_iterator cend() const noexcept { return _components.end(); }

    /// The segment without its last component. Throws `InvalidOperationOnPathSegment` if it is
    /// empty.
    [[nodiscard]] PathSegment pop() const;

    /// The segment without its first component. Throws `InvalidOperationOnPathSegment` if it is
    /// empty.
    [[nodiscard]] PathSegment popHead() const;

    /// The first `n` components, or for a negative `n` all but the last `-n`. Throws
    /// `InvalidOperationOnPathSegment` unless `n` is not 0 and `-size() < n <= size()`.
    [[nodiscard]] PathSegment head(int n) const;

    /// Each component preceded by the separator, as in `/world/a`; empty for an empty segment.
    [[nodiscard]] std::string string() const;

    /// Same components, run-time and separator.
    bool operator==(const PathSegment& other) const noexcept;
    bool operator!=(const PathSegment& other) const noexcept { return !(*this == other); }

private:
    friend class detail::PathBuilder;

    Components _components;
    Rtid _runTimeId;
    char _separator;
};

inline PathSegmentView::PathSegmentView(const PathSegment& segment) noexcept
    : PathSegmentView(segment.components().data(), segment.components().data() + segment.size(),
                      segment.runTimeId(), segment.separator())
{}

/// An operation that the segment is too short for. The message is the segment's text.
class KIV_EXPORT InvalidOperationOnPathSegment : public std::out_of_range
{
public:
    explicit InvalidOperationOnPathSegment(const PathSegment& segment);
    InvalidOperationOnPathSegment(const InvalidOperationOnPathSegment&) = default;
    ~InvalidOperationOnPathSegment() override;
};

} // namespace Kiv_v4
