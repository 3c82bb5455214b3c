#include "kiv/pathSegment.h"

#include <string_view>
#include <utility>

#include "detail/headCount.h"
#include "detail/pathText.h"

namespace Kiv_v4 {

namespace {

PathSegment::Components componentsOf(std::string_view text, char separator)
{
    PathSegment::Components components;
    components.reserve(detail::componentCount(text, separator));
    detail::forEachComponent(text, separator, [&components](PathComponent&& component) {
        components.push_back(std::move(component));
    });
    return components;
}

} // namespace

PathSegment::PathSegment(const std::string& text, Rtid runTimeId, char separator)
    : PathSegment(componentsOf(text, separator), runTimeId, separator)
{}

PathSegment::PathSegment(const Components& components, Rtid runTimeId, char separator)
    : _components(components), _runTimeId(runTimeId), _separator(separator)
{}

PathSegment::PathSegment(Components&& components, Rtid runTimeId, char separator) noexcept
    : _components(std::move(components)), _runTimeId(runTimeId), _separator(separator)
{}

PathSegment::PathSegment(const PathComponent& component, Rtid runTimeId, char separator)
    : PathSegment(Components{component}, runTimeId, separator)
{}

PathSegment::PathSegment(const PathSegmentView& view)
    : _components(view.begin(), view.end()), _runTimeId(view.runTimeId()),
      _separator(view.separator())
{}

PathSegment PathSegment::pop() const
{
    if (empty()) {
        throw InvalidOperationOnPathSegment(*this);
    }
    return {Components(begin(), end() - 1), _runTimeId, _separator};
}

PathSegment PathSegment::popHead() const
{
    if (empty()) {
        throw InvalidOperationOnPathSegment(*this);
    }
    return {Components(begin() + 1, end()), _runTimeId, _separator};
}

PathSegment PathSegment::head(int n) const
{
    const auto count = detail::headCount(n, size());
    if (count == 0) {
        throw InvalidOperationOnPathSegment(*this);
    }
    return {Components(begin(), begin() + static_cast<std::ptrdiff_t>(count)), _runTimeId,
            _separator};
}

std::string PathSegment::string() const
{
    std::string text(detail::textSize(*this), '\0');
    detail::writeText(text.data(), *this);
    return text;
}

bool PathSegment::operator==(const PathSegment& other) const noexcept
{
    return _runTimeId == other._runTimeId && _separator == other._separator &&
           _components == other._components;
}

InvalidOperationOnPathSegment::InvalidOperationOnPathSegment(const PathSegment& segment)
    : std::out_of_range(segment.string())
{}

InvalidOperationOnPathSegment::~InvalidOperationOnPathSegment() = default;

} // namespace Kiv_v4
