#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "kiv/detail/pathBody.h"
#include "kiv/path.h"

namespace Kiv_v4::detail {

/// Builds a path in place. The constructor gets the numbers of components and segments; nothing
/// after it needs memory.
class PathBuilder
{
public:
    PathBuilder(std::size_t nbSegments, std::size_t size);
    PathBuilder(const PathBuilder&) = delete;
    ~PathBuilder();
    PathBuilder& operator=(const PathBuilder&) = delete;

    template <class Component>
    void add(Component&& component) noexcept
    {
        new (_components + _body->_size) PathComponent(std::forward<Component>(component));
        ++_body->_size;
    }

    void add(const PathComponent* begin, const PathComponent* end) noexcept;

    /// Add a whole segment; the second moves its components.
    void addSegment(const PathSegmentView& segment) noexcept;
    void addSegment(PathSegment&& segment) noexcept;

    /// Adds the segments of `path` from `first` up to `last`.
    void addSegments(const Path& path, std::size_t first, std::size_t last) noexcept;

    /// Makes the components since the last segment the next one.
    void endSegment(Rtid runTimeId, char separator) noexcept;

    /// Goes back to just after the last `endSegment`.
    void reopenSegment() noexcept { --_body->_nbSegments; }

    /// `parent`, which must not be empty, with one component more in its last segment. Linked to
    /// `parent` where that is allowed.
    [[nodiscard]] static Path child(const Path& parent, const PathComponent& added);

    /// The first `size` components of `path`, fewer than all, in their segments: if `path` is
    /// linked to that path; otherwise the empty path.
    [[nodiscard]] static Path linkedHead(const Path& path, std::size_t size) noexcept;

    /// A path of the segments so far.
    [[nodiscard]] Path soFar() const;

    /// The path, once it is complete. The builder no longer has it.
    [[nodiscard]] Path path() && noexcept;

private:
    void addShown(const PathBody& parent) noexcept;

    PathBody* _body = nullptr;
    PathComponent* _components = nullptr;
    PathBody::Mark* _marks = nullptr;
};

} // namespace Kiv_v4::detail
