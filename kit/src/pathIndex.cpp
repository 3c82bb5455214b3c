#include "pathIndex.h"

#include <algorithm>
#include <tuple>

namespace Kiv_v4::kit {

namespace {

auto runTimeOf(const PathSegmentView& segment)
{
    return std::tuple(segment.runTimeId(), segment.separator());
}

} // namespace

/// A path is a sequence of components with a mark before each segment. Marks sort before
/// components, and the end before both.
bool HierarchyOrder::operator()(const Path& left, const Path& right) const noexcept
{
    const auto shared = std::min(left.nbSegments(), right.nbSegments());
    for (std::size_t i = 0; i < shared; ++i) {
        const auto own = left.segment(i);
        const auto other = right.segment(i);
        if (runTimeOf(own) != runTimeOf(other)) {
            return runTimeOf(own) < runTimeOf(other);
        }
        const auto [ownEnd, otherEnd] =
            std::mismatch(own.begin(), own.end(), other.begin(), other.end());
        if (ownEnd != own.end() && otherEnd != other.end()) {
            return ownEnd->id() < otherEnd->id();
        }
        if (own.size() != other.size()) {
            return own.size() < other.size();
        }
    }
    return left.nbSegments() < right.nbSegments();
}

} // namespace Kiv_v4::kit
