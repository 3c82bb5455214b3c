#include "pathBuilder.h"

#include <cassert>

namespace Kiv_v4::detail {

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
        _body->letGo();
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
    return _body ? Path(std::exchange(_body, nullptr)) : Path();
}

} // namespace Kiv_v4::detail
