#include "kiv/path.h"

#include <algorithm>
#include <utility>

#include "detail/headCount.h"
#include "detail/noDestructor.h"
#include "detail/pathBuilder.h"
#include "detail/pathText.h"

namespace Kiv_v4 {

namespace {

using detail::PathBuilder;

bool continues(const PathSegmentView& first, const PathSegmentView& second)
{
    return first.runTimeId() == second.runTimeId() && first.separator() == second.separator();
}

std::size_t sizeOf(const Path::Segments& segments)
{
    std::size_t size = 0;
    for (const auto& segment : segments) {
        size += segment.size();
    }
    return size;
}

} // namespace

Path::Path(const detail::PathBody* body) noexcept : _body(body), _hash(body->hash()) {}

Path::Path(const PathSegment& segment)
{
    PathBuilder made(1, segment.size());
    made.addSegment(PathSegmentView(segment));
    *this = std::move(made).path();
}

Path::Path(PathSegment&& segment)
{
    PathBuilder made(1, segment.size());
    made.addSegment(std::move(segment));
    *this = std::move(made).path();
}

Path::Path(const Segments& segments)
{
    PathBuilder made(segments.size(), sizeOf(segments));
    for (const auto& segment : segments) {
        made.addSegment(PathSegmentView(segment));
    }
    *this = std::move(made).path();
}

Path::Path(Segments&& segments)
{
    PathBuilder made(segments.size(), sizeOf(segments));
    for (auto& segment : segments) {
        made.addSegment(std::move(segment));
    }
    segments.clear();
    *this = std::move(made).path();
}

PathComponent Path::back() const
{
    requireComponents();
    return *(end() - 1);
}

Path Path::operator+(const PathComponent& component) const
{
    requireComponents();
    return PathBuilder::child(*this, component);
}

Path Path::operator+(const std::string& name) const
{
    return *this + PathComponent(name);
}

Path Path::operator+(const PathSegment& segment) const
{
    PathBuilder made(nbSegments() + 1, size() + segment.size());
    made.addSegments(*this, 0, nbSegments());
    made.addSegment(PathSegmentView(segment));
    return std::move(made).path();
}

Path Path::pop() const
{
    requireComponents();
    if (auto parent = PathBuilder::linkedHead(*this, size() - 1); !parent.empty()) {
        return parent;
    }
    return segment(nbSegments() - 1).size() == 1 ? popSegment() : withTip(1, nullptr);
}

Path Path::popHead() const
{
    requireComponents();
    const auto first = segment(0);
    if (first.empty()) {
        throw InvalidOperationOnPathSegment(PathSegment(first));
    }
    const auto dropped = first.size() == 1 ? 1U : 0U;
    PathBuilder made(nbSegments() - dropped, size() - 1);
    if (dropped == 0) {
        made.add(first.begin() + 1, first.end());
        made.endSegment(first.runTimeId(), first.separator());
    }
    made.addSegments(*this, 1, nbSegments());
    return std::move(made).path();
}

Path Path::popSegment() const
{
    requireComponents();
    const auto kept = nbSegments() - 1;
    PathBuilder made(kept, size() - segment(kept).size());
    made.addSegments(*this, 0, kept);
    return std::move(made).path();
}

Path Path::head(int n) const
{
    const auto count = detail::headCount(n, size());
    if (count == 0) {
        throw InvalidOperationOnPath(*this);
    }
    if (count == size()) {
        return *this;
    }
    if (auto linked = PathBuilder::linkedHead(*this, count); !linked.empty()) {
        return linked;
    }
    std::size_t whole = 0;
    auto left = count;
    for (; whole != nbSegments() && segment(whole).size() <= left; ++whole) {
        left -= segment(whole).size();
    }
    PathBuilder made(whole + (left > 0 ? 1 : 0), count);
    made.addSegments(*this, 0, whole);
    if (left > 0) {
        const auto cut = segment(whole);
        made.add(cut.begin(), cut.begin() + left);
        made.endSegment(cut.runTimeId(), cut.separator());
    }
    return std::move(made).path();
}

Path Path::sibling(const PathComponent& component) const
{
    requireComponents();
    if (const auto parent = PathBuilder::linkedHead(*this, size() - 1); !parent.empty()) {
        return PathBuilder::child(parent, component);
    }
    return withTip(1, &component);
}

Path Path::replaceComponent(int index, const PathComponent& component) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= size()) {
        throw InvalidOperationOnPath(*this);
    }
    const auto* const replaced = begin() + index;
    PathBuilder made(nbSegments(), size());
    for (std::size_t i = 0; i != nbSegments(); ++i) {
        const auto part = segment(i);
        for (const auto& own : part) {
            made.add(&own == replaced ? component : own);
        }
        made.endSegment(part.runTimeId(), part.separator());
    }
    return std::move(made).path();
}

Path Path::reparent(const Path& oldParent, const Path& newParent) const
{
    if (!startsWith(oldParent)) {
        throw InvalidOperationOnPath(*this);
    }
    auto dropped = oldParent.size();
    std::size_t cut = 0;
    for (; cut != nbSegments() && dropped > segment(cut).size(); ++cut) {
        dropped -= segment(cut).size();
    }
    if (cut == nbSegments()) {
        return newParent;
    }

    const auto tail = segment(cut);
    const auto ahead = newParent.nbSegments();
    // Without an old parent the whole path follows, an empty first segment included.
    const auto hasTail = dropped != tail.size() || oldParent.empty();
    const auto joins = hasTail && ahead != 0 && continues(newParent.segment(ahead - 1), tail);
    PathBuilder made(ahead + (hasTail && !joins ? 1 : 0) + nbSegments() - cut - 1,
                     newParent.size() + size() - oldParent.size());
    made.addSegments(newParent, 0, ahead);
    if (joins) {
        made.reopenSegment();
    }
    if (hasTail) {
        made.add(tail.begin() + dropped, tail.end());
        made.endSegment(tail.runTimeId(), tail.separator());
    }
    made.addSegments(*this, cut + 1, nbSegments());
    return std::move(made).path();
}

bool Path::startsWith(const Path& prefix) const noexcept
{
    return prefix.size() <= size() && std::equal(prefix.begin(), prefix.end(), begin());
}

bool Path::isAtOrBelow(const Path& ancestor) const noexcept
{
    const auto count = ancestor.nbSegments();
    if (count > nbSegments() || !startsWith(ancestor)) {
        return false;
    }
    for (std::size_t i = 0; i != count; ++i) {
        const auto own = segment(i);
        const auto other = ancestor.segment(i);
        const auto isLast = i + 1 == count;
        if (!continues(other, own) || own.size() < other.size() ||
            (!isLast && own.size() != other.size())) {
            return false;
        }
    }
    return true;
}

std::string Path::string() const
{
    return detail::joinedText(*this);
}

/// The path without the last `dropped` components of its last segment, which then gets `added`, if
/// that is not null.
Path Path::withTip(std::size_t dropped, const PathComponent* added) const
{
    const auto last = segment(nbSegments() - 1);
    if (last.size() < dropped) {
        throw InvalidOperationOnPathSegment(PathSegment(last));
    }
    PathBuilder made(nbSegments(), size() - dropped + (added ? 1 : 0));
    made.addSegments(*this, 0, nbSegments() - 1);
    made.add(last.begin(), last.end() - dropped);
    if (added) {
        made.add(*added);
    }
    made.endSegment(last.runTimeId(), last.separator());
    return std::move(made).path();
}

void Path::requireComponents() const
{
    if (empty()) {
        throw InvalidOperationOnPath(*this);
    }
}

const Path::Segments& Path::noSegments() noexcept
{
    static detail::NoDestructor<const Segments> none;
    return *none;
}

InvalidOperationOnPath::InvalidOperationOnPath(const Path& path) : std::out_of_range(path.string())
{}

InvalidOperationOnPath::~InvalidOperationOnPath() = default;

} // namespace Kiv_v4
