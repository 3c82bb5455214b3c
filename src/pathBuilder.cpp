#include "detail/pathBuilder.h"

#include <cassert>
#include <cstring>

namespace Kiv_v4::detail {

namespace {

/// The hash that no path has; containers use it to mark free slots.
constexpr std::uint32_t kNoHash = 0xFFFFFFFF;
constexpr std::uint32_t kInsteadOfNoHash = 0xFFFFFFFE;

std::uint32_t hashed(std::uint32_t hash, const PathComponent& component) noexcept
{
    return (hash * 1000003U) ^ static_cast<std::uint32_t>(component.id());
}

std::uint32_t finished(std::uint32_t hash, std::size_t size) noexcept
{
    hash ^= static_cast<std::uint32_t>(size);
    return hash == kNoHash ? kInsteadOfNoHash : hash;
}

std::uint32_t hashOf(const PathBody& body) noexcept
{
    std::uint32_t hash = 0x345678;
    for (const auto& component : body) {
        hash = hashed(hash, component);
    }
    return finished(hash, body.size());
}

/// The hash of a child from that of its parent.
std::uint32_t hashOfChild(const PathBody& child, std::uint32_t parentHash) noexcept
{
    if (parentHash == kInsteadOfNoHash) {
        return hashOf(child);
    }
    const auto open = parentHash ^ static_cast<std::uint32_t>(child.size() - 1);
    return finished(hashed(open, *(child.end() - 1)), child.size());
}

} // namespace

PathBuilder::PathBuilder(std::size_t nbSegments, std::size_t size)
{
    if (nbSegments != 0) {
        auto* const memory = ::operator new(sizeof(PathBody) + size * sizeof(PathComponent) +
                                            nbSegments * sizeof(PathBody::Mark));
        _body = new (memory) PathBody;
        _components = reinterpret_cast<PathComponent*>(_body + 1);
        _marks = reinterpret_cast<PathBody::Mark*>(_components + size);
    }
}

PathBuilder::~PathBuilder()
{
    if (_body) {
        _body->release();
    }
}

void PathBuilder::add(const PathComponent* begin, const PathComponent* end) noexcept
{
    for (; begin != end; ++begin) {
        add(*begin);
    }
}

void PathBuilder::addSegment(const PathSegmentView& segment) noexcept
{
    add(segment.begin(), segment.end());
    endSegment(segment.runTimeId(), segment.separator());
}

void PathBuilder::addSegment(PathSegment&& segment) noexcept
{
    for (auto& component : segment._components) {
        add(std::move(component));
    }
    segment._components.clear();
    endSegment(segment.runTimeId(), segment.separator());
}

void PathBuilder::addSegments(const Path& path, std::size_t first, std::size_t last) noexcept
{
    for (; first != last; ++first) {
        addSegment(path.segment(first));
    }
}

void PathBuilder::endSegment(Rtid runTimeId, char separator) noexcept
{
    new (_marks + _body->_nbSegments) PathBody::Mark{_body->_size, runTimeId, separator};
    ++_body->_nbSegments;
}

Path PathBuilder::child(const Path& parent, const PathComponent& added)
{
    const auto& shown = *parent._body;
    PathBuilder made(shown._nbSegments, shown._size + 1);
    auto& body = *made._body;
    if (shown._nbLinks == PathBody::kMostLinks) {
        made.add(shown.begin(), shown.end());
    } else {
        made.addShown(shown);
    }
    made.add(added);
    std::memcpy(made._marks, shown.marks(), shown._nbSegments * sizeof(PathBody::Mark));
    ++made._marks[shown._nbSegments - 1].end;
    body._nbSegments = shown._nbSegments;
    body._hash = hashOfChild(body, shown._hash);
    return Path(std::exchange(made._body, nullptr));
}

Path PathBuilder::linkedHead(const Path& path, std::size_t size) noexcept
{
    const auto* const head = path._body->linkedHead(size);
    if (!head) {
        return {};
    }
    head->retain();
    return Path(head);
}

Path PathBuilder::soFar() const
{
    PathBuilder copy(_body->_nbSegments, _body->_size);
    copy.add(_components, _components + _body->_size);
    for (std::size_t i = 0; i != _body->_nbSegments; ++i) {
        new (copy._marks + i) PathBody::Mark(_marks[i]);
    }
    copy._body->_nbSegments = _body->_nbSegments;
    return std::move(copy).path();
}

Path PathBuilder::path() && noexcept
{
    assert(!_body || _components + _body->_size == static_cast<void*>(_marks));
    if (!_body) {
        return {};
    }
    _body->_hash = hashOf(*_body);
    return Path(std::exchange(_body, nullptr));
}

/// Links the body to its parent and shows its components, which it must not destroy.
void PathBuilder::addShown(const PathBody& parent) noexcept
{
    std::memcpy(static_cast<void*>(_components), static_cast<const void*>(parent.begin()),
                parent._size * sizeof(PathComponent));
    parent.retain();
    _body->_parent = &parent;
    _body->_nbLinks = parent._nbLinks + 1;
    _body->_size = parent._size;
}

} // namespace Kiv_v4::detail
