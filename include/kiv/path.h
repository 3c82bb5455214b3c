#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "kiv/detail/pathBody.h"
#include "kiv/export.h"
#include "kiv/pathComponent.h"
#include "kiv/pathSegment.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

namespace detail {
class PathTable;
}

/// Names one scene item across data models: one `PathSegment` per run-time that the way from the
/// scene's root to the item crosses.
///
/// A path is an immutable value. Operations return new paths; nothing reached through a path
/// (segments, iterators) can change it. Copies share one body.
///
///     const Path cube = PathString::path("/world/props,:file:cube");
///     cube.runTimeId();             // the run-time of the last segment
///     cube.popSegment();            // /world/props
///     cube.startsWith(cube.pop());  // true
///
/// **Invariants.** The flat view (`begin`, `end`, `size`) is the concatenation of the segments'
/// components. Segments may be empty: they count in `nbSegments` and in equality only. "No
/// components" below means an empty flat view, whatever the number of segments.
///
/// **Cost.** Copying and moving are constant; the operations that return a new path are linear in
/// the number of its components, and allocate once. `+` and the way back from its result (`pop`,
/// `head`) are cheapest: a path made by `+` shares components with its parent, and keeps alive up
/// to 15 of the paths that it was made from. The components lie side by side. The first call of
/// `getSegments` makes the vector of segments, once for all copies; `segment` does not need it.
///
/// **Errors.** An operation that the path does not allow throws `InvalidOperationOnPath` with the
/// path's text as its message.
class KIV_EXPORT Path
{
public:
    /// The segments from the first run-time to the last.
    using Segments = std::vector<PathSegment>;
    /// Walks the flat view.
    using const_iterator = const PathComponent*;
    using iterator = const_iterator;
    using value_type = PathComponent;

    /// The empty path: no segments.
    Path() noexcept = default;

    /// A path of exactly that one segment, even if it is empty.
    Path(const PathSegment& segment);
    Path(PathSegment&& segment);

    Path(const Segments& segments);
    Path(Segments&& segments);

    /// A copy shares all with the other.
    Path(const Path& other) noexcept : _body(other._body), _hash(other._hash)
    {
        if (_body) {
            _body->retain();
        }
    }

    /// A moved-from path is the empty path.
    Path(Path&& other) noexcept
        : _body(std::exchange(other._body, nullptr)), _hash(std::exchange(other._hash, kEmptyHash))
    {}

    ~Path()
    {
        if (_body) {
            _body->release();
        }
    }

    /// As the constructors.
    Path& operator=(const Path& other) noexcept { return *this = Path(other); }

    /// As the constructors.
    Path& operator=(Path&& other) noexcept
    {
        Path taken(std::move(other));
        std::swap(_body, taken._body);
        std::swap(_hash, taken._hash);
        return *this;
    }

    /// The number of components over all segments.
    [[nodiscard]] std::size_t size() const noexcept { return _body ? _body->size() : 0; }

    /// Whether there are no components.
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// The number of segments, empty ones included.
    [[nodiscard]] std::size_t nbSegments() const noexcept
    {
        return _body ? _body->nbSegments() : 0;
    }

    /// The segment at `index`, which must be less than `nbSegments()`; valid while any copy of this
    /// path exists.
    [[nodiscard]] PathSegmentView segment(std::size_t index) const noexcept
    {
        return _body->segment(index);
    }

    /// The segments, valid while any copy of this path exists.
    [[nodiscard]] const Segments& getSegments() const
    {
        return _body ? _body->segments() : noSegments();
    }

    /// The flat view: the components of all segments, in order.
    [[nodiscard]] const_iterator begin() const noexcept { return _body ? _body->begin() : nullptr; }
    [[nodiscard]] const_iterator end() const noexcept { return _body ? _body->end() : nullptr; }
    [[nodiscard]] const_iterator cbegin() const noexcept { return begin(); }
    [[nodiscard]] const_iterator cend() const noexcept { return end(); }

    /// The run-time of the last segment; 0 without segments.
    [[nodiscard]] Rtid runTimeId() const noexcept
    {
        return _body ? _body->marks()[_body->nbSegments() - 1].runTimeId : Rtid{0};
    }

    /// The last component. Throws if there are no components.
    [[nodiscard]] PathComponent back() const;

    /// The path with `component` added to the last segment. Throws if there are no components,
    /// since there is no run-time to add to.
    [[nodiscard]] Path operator+(const PathComponent& component) const;

    /// The same with the component of `name`, which is not split.
    [[nodiscard]] Path operator+(const std::string& name) const;

    /// The path with `segment` added as a new last segment; never throws for the path's sake.
    [[nodiscard]] Path operator+(const PathSegment& segment) const;

    /// The path without its last component, and without the last segment if that was its only
    /// component. Throws if there are no components; if the last segment is empty and an earlier
    /// one is not, throws `InvalidOperationOnPathSegment`.
    [[nodiscard]] Path pop() const;

    /// The mirror image of `pop()` at the front.
    [[nodiscard]] Path popHead() const;

    /// The path without its last segment. Throws if there are no components.
    [[nodiscard]] Path popSegment() const;

    /// The first `n` components, or for a negative `n` all but the last `-n`, in their segments.
    /// Empty segments right after the cut are kept. Throws unless `n` is not 0 and `-size() < n <=
    /// size()`.
    [[nodiscard]] Path head(int n) const;

    /// The path with its last component replaced, in the same segment. Throws as `pop()` does.
    [[nodiscard]] Path sibling(const PathComponent& component) const;

    /// The path with the component at flat index `index` replaced, in the same segment. Throws
    /// unless `0 <= index < size()`.
    [[nodiscard]] Path replaceComponent(int index, const PathComponent& component) const;

    /// The path that this one gets when the subtree at `oldParent` moves to `newParent`:
    /// `newParent` followed by the components after the first `oldParent.size()`. The rest of the
    /// segment in which `oldParent` ends joins the last segment of `newParent` if run-time and
    /// separator are the same, and is a segment of its own otherwise; later segments follow
    /// unchanged.
    ///
    /// Every path starts with an empty `oldParent`. Does not check whether `newParent` lies inside
    /// the moved subtree. Throws if the path does not start with `oldParent`.
    [[nodiscard]] Path reparent(const Path& oldParent, const Path& newParent) const;

    /// Whether the first components of this path are those of `prefix`. Segment boundaries,
    /// run-times and separators do not count, unlike in `==`. Every path starts with a path without
    /// components.
    [[nodiscard]] bool startsWith(const Path& prefix) const noexcept;

    /// Whether this path names the item at `ancestor` or one below it: whether `pop()`, done some
    /// number of times or not at all, yields `ancestor`. Segments count as in `==`, so the scenes
    /// of two run-times whose items have equal names stay apart. Everything is below the empty
    /// path.
    [[nodiscard]] bool isAtOrBelow(const Path& ancestor) const noexcept;

    /// The texts of the segments one after another, with nothing between them. For text that parses
    /// back, see `PathString`.
    [[nodiscard]] std::string string() const;

    /// A hash of the components, computed when the path is made. Paths of the same components in
    /// different segments hash alike.
    [[nodiscard]] std::uint32_t hash() const noexcept { return _hash; }

    /// Equal segments, pairwise.
    bool operator==(const Path& other) const noexcept
    {
        return _body == other._body ||
               (_hash == other._hash && _body && other._body && *_body == *other._body);
    }
    bool operator!=(const Path& other) const noexcept { return !(*this == other); }

private:
    friend class detail::PathBuilder;
    friend class detail::PathTable;

    /// The hash of a path without components.
    static constexpr std::uint32_t kEmptyHash = 0x345678;

    KIV_HIDDEN explicit Path(const detail::PathBody* body) noexcept;

    [[nodiscard]] KIV_HIDDEN Path withTip(std::size_t dropped, const PathComponent* added) const;
    KIV_HIDDEN void requireComponents() const;
    static const Segments& noSegments() noexcept;

    const detail::PathBody* _body = nullptr;
    std::uint32_t _hash = kEmptyHash;
};

/// An operation that the path does not allow. The message is the path's text.
class KIV_EXPORT InvalidOperationOnPath : public std::out_of_range
{
public:
    explicit InvalidOperationOnPath(const Path& path);
    InvalidOperationOnPath(const InvalidOperationOnPath&) = default;
    ~InvalidOperationOnPath() override;
};

} // namespace Kiv_v4

/// `Path::hash()`: what containers keyed by paths use.
template <>
struct std::hash<Kiv_v4::Path>
{
    /// The path's own hash.
    std::size_t operator()(const Kiv_v4::Path& path) const noexcept { return path.hash(); }
};
