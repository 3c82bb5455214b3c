#include "kiv/path.h"

#include <algorithm>
#include <utility>

#include "headCount.h"
#include "pathText.h"

namespace Kiv_v4 {

namespace {

/// The components of `from` up to `end`, with room for and followed by `last`.
PathSegment withLast(const PathSegment& from, PathSegment::const_iterator end,
                     const PathComponent& last)
{
    PathSegment::Components components;
    components.reserve(static_cast<std::size_t>(end - from.begin()) + 1);
    components.assign(from.begin(), end);
    components.push_back(last);
    return {std::move(components), from.runTimeId(), from.separator()};
}

/// The components of `from` from `begin` on.
PathSegment tail(const PathSegment& from, PathSegment::const_iterator begin)
{
    return {PathSegment::Components(begin, from.end()), from.runTimeId(), from.separator()};
}

/// The components of `first`, followed by those of `second` from `begin` on.
PathSegment joined(const PathSegment& first, const PathSegment& second,
                   PathSegment::const_iterator begin)
{
    PathSegment::Components components;
    components.reserve(first.size() + static_cast<std::size_t>(second.end() - begin));
    components.assign(first.begin(), first.end());
    components.insert(components.end(), begin, second.end());
    return {std::move(components), first.runTimeId(), first.separator()};
}

/// Goes through a path's components without its flat view being made.
class ComponentCursor
{
public:
    explicit ComponentCursor(const Path& path) : _segment(path.getSegments().begin()) {}

    /// The next component, of which there must be one.
    const PathComponent& next() noexcept
    {
        while (_offset == _segment->size()) {
            ++_segment;
            _offset = 0;
        }
        return _segment->components()[_offset++];
    }

private:
    Path::Segments::const_iterator _segment;
    std::size_t _offset = 0;
};

bool continues(const PathSegment& first, const PathSegment& second)
{
    return first.runTimeId() == second.runTimeId() && first.separator() == second.separator();
}

} // namespace

Path::Body::Body(Segments&& pathSegments) noexcept : segments(std::move(pathSegments))
{
    for (const auto& segment : segments) {
        size += segment.size();
    }
}

Path::Body::~Body()
{
    delete flat.load(std::memory_order_acquire);
}

const Path::Components& Path::Body::flatView() const
{
    const auto* made = flat.load(std::memory_order_acquire);
    if (!made) {
        auto all = std::make_unique<Components>();
        all->reserve(size);
        for (const auto& segment : segments) {
            all->insert(all->end(), segment.begin(), segment.end());
        }
        // Of several threads that came here, the first one's view is kept and given to all.
        if (flat.compare_exchange_strong(made, all.get(), std::memory_order_acq_rel)) {
            made = all.release();
        }
    }
    return *made;
}

Path::Path(const PathSegment& segment) : Path(PathSegment(segment)) {}

Path::Path(PathSegment&& segment)
{
    Segments segments;
    segments.push_back(std::move(segment));
    _body = std::make_shared<const Body>(std::move(segments));
}

Path::Path(const Segments& segments) : Path(Segments(segments)) {}

Path::Path(Segments&& segments)
{
    if (!segments.empty()) {
        _body = std::make_shared<const Body>(std::move(segments));
    }
}

PathComponent Path::back() const
{
    requireComponents();
    auto last = getSegments().rbegin();
    while (last->empty()) {
        ++last;
    }
    return last->components().back();
}

Path Path::operator+(const PathComponent& component) const
{
    requireComponents();
    const auto& last = getSegments().back();
    return segmentsWithLast(withLast(last, last.end(), component));
}

Path Path::operator+(const std::string& name) const
{
    return *this + PathComponent(name);
}

Path Path::operator+(const PathSegment& segment) const
{
    Segments segments;
    segments.reserve(nbSegments() + 1);
    segments = getSegments();
    segments.push_back(segment);
    return segments;
}

Path Path::pop() const
{
    requireComponents();
    const auto& segments = getSegments();
    if (segments.back().size() == 1) {
        return Segments(segments.begin(), segments.end() - 1);
    }
    return segmentsWithLast(segments.back().pop());
}

Path Path::popHead() const
{
    requireComponents();
    const auto& segments = getSegments();
    if (segments.front().size() == 1) {
        return Segments(segments.begin() + 1, segments.end());
    }
    Segments result;
    result.reserve(segments.size());
    result.push_back(segments.front().popHead());
    result.insert(result.end(), segments.begin() + 1, segments.end());
    return result;
}

Path Path::popSegment() const
{
    requireComponents();
    return Segments(getSegments().begin(), getSegments().end() - 1);
}

Path Path::head(int n) const
{
    auto count = detail::headCount(n, size());
    if (count == 0) {
        throw InvalidOperationOnPath(*this);
    }
    Segments result;
    result.reserve(nbSegments());
    for (const auto& segment : getSegments()) {
        if (segment.size() > count) {
            if (count > 0) {
                result.push_back(segment.head(static_cast<int>(count)));
            }
            break;
        }
        result.push_back(segment);
        count -= segment.size();
    }
    return result;
}

Path Path::sibling(const PathComponent& component) const
{
    requireComponents();
    const auto& last = getSegments().back();
    if (last.empty()) {
        throw InvalidOperationOnPathSegment(last);
    }
    return segmentsWithLast(withLast(last, last.end() - 1, component));
}

Path Path::replaceComponent(int index, const PathComponent& component) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= size()) {
        throw InvalidOperationOnPath(*this);
    }
    auto segments = getSegments();
    auto offset = static_cast<std::size_t>(index);
    auto segment = segments.begin();
    for (; offset >= segment->size(); ++segment) {
        offset -= segment->size();
    }
    auto components = segment->components();
    components[offset] = component;
    *segment = PathSegment(std::move(components), segment->runTimeId(), segment->separator());
    return segments;
}

Path Path::reparent(const Path& oldParent, const Path& newParent) const
{
    if (!startsWith(oldParent)) {
        throw InvalidOperationOnPath(*this);
    }
    const auto& segments = getSegments();
    auto rest = oldParent.size();
    auto cut = segments.begin();
    for (; cut != segments.end() && rest > cut->size(); ++cut) {
        rest -= cut->size();
    }
    if (cut == segments.end()) {
        return newParent;
    }

    const auto& ahead = newParent.getSegments();
    Segments result;
    result.reserve(ahead.size() + static_cast<std::size_t>(segments.end() - cut));
    // Without an old parent the whole path follows, an empty first segment included.
    const auto begin = cut->begin() + static_cast<std::ptrdiff_t>(rest);
    if (begin == cut->end() && !oldParent.empty()) {
        result = ahead;
    } else if (!ahead.empty() && continues(ahead.back(), *cut)) {
        result.assign(ahead.begin(), ahead.end() - 1);
        result.push_back(joined(ahead.back(), *cut, begin));
    } else {
        result = ahead;
        result.push_back(tail(*cut, begin));
    }
    result.insert(result.end(), cut + 1, segments.end());
    return result;
}

bool Path::startsWith(const Path& prefix) const noexcept
{
    if (prefix.size() > size()) {
        return false;
    }
    ComponentCursor mine(*this);
    ComponentCursor theirs(prefix);
    for (auto left = prefix.size(); left > 0; --left) {
        if (mine.next() != theirs.next()) {
            return false;
        }
    }
    return true;
}

std::string Path::string() const
{
    return detail::joinedText(getSegments());
}

bool Path::operator==(const Path& other) const noexcept
{
    return _body == other._body || getSegments() == other.getSegments();
}

Path::Segments Path::segmentsWithLast(PathSegment&& last) const
{
    const auto& segments = getSegments();
    Segments result;
    result.reserve(segments.size());
    result.assign(segments.begin(), segments.end() - 1);
    result.push_back(std::move(last));
    return result;
}

void Path::requireComponents() const
{
    if (empty()) {
        throw InvalidOperationOnPath(*this);
    }
}

std::uint32_t Path::computeHash() const noexcept
{
    std::uint32_t hash = 0x345678;
    for (const auto& segment : getSegments()) {
        for (const auto& component : segment) {
            hash = (hash * 1000003U) ^ static_cast<std::uint32_t>(component.id());
        }
    }
    hash ^= static_cast<std::uint32_t>(size());
    if (hash == kNoHash) {
        hash = 0xFFFFFFFE;
    }
    if (_body) {
        _body->hash = hash;
    }
    return hash;
}

const Path::Segments& Path::noSegments() noexcept
{
    static const auto& none = *new Segments;
    return none;
}

const Path::Components& Path::noComponents() noexcept
{
    static const auto& none = *new Components;
    return none;
}

InvalidOperationOnPath::InvalidOperationOnPath(const Path& path) : std::out_of_range(path.string())
{}

InvalidOperationOnPath::~InvalidOperationOnPath() = default;

} // namespace Kiv_v4
