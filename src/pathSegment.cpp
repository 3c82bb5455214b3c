#include "kiv/pathSegment.h"

#include <algorithm>

#include "headCount.h"
#include "pathText.h"
#include "splitting.h"

namespace Kiv_v4 {

PathSegment::Components detail::componentsOf(std::string_view text, char separator)
{
    text = lstripped(text, separator);
    PathSegment::Components components;
    if (separator != 0) {
        components.reserve(
            static_cast<std::size_t>(std::count(text.begin(), text.end(), separator)) + 1);
    }
    forEachPiece(text, separator,
                 [&](std::string_view name) { components.push_back(PathComponent::intern(name)); });
    return components;
}

PathSegment::PathSegment(const std::string& text, Rtid runTimeId, char separator)
    : PathSegment(detail::componentsOf(text, separator), runTimeId, separator)
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
