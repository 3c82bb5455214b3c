#include "kiv/subtreeWalk.h"

#include <utility>

#include "kiv/hierarchy_v4_2.h"
#include "kiv/runTimeMgr.h"

namespace Kiv_v4 {

SegmentWalk::SegmentWalk() = default;

SegmentWalk::~SegmentWalk() = default;

SubtreeWalk::SubtreeWalk(const SceneItem::Ptr& top)
{
    enter(top, 0);
}

SubtreeWalk::~SubtreeWalk() = default;

bool SubtreeWalk::next()
{
    while (!_levels.empty()) {
        const auto& level = _levels.back();
        if (!level.walk->next()) {
            _levels.pop_back();
        } else if (level.walk->runTimeId() == level.runTimeId || !enter(item(), depth())) {
            return true;
        }
    }
    return false;
}

void SubtreeWalk::skipSubtree()
{
    _levels.back().walk->skipSubtree();
}

std::size_t SubtreeWalk::depth() const
{
    return _levels.back().depth + _levels.back().walk->depth();
}

Rtid SubtreeWalk::runTimeId() const
{
    return _levels.back().walk->runTimeId();
}

const PathComponent& SubtreeWalk::name() const
{
    return _levels.back().walk->name();
}

const std::string& SubtreeWalk::nodeType() const
{
    return _levels.back().walk->nodeType();
}

Path SubtreeWalk::path() const
{
    return _levels.back().walk->path();
}

SceneItem::Ptr SubtreeWalk::item() const
{
    return _levels.back().walk->item();
}

bool SubtreeWalk::enter(const SceneItem::Ptr& top, std::size_t depth)
{
    if (!top || !RunTimeMgr::instance().hierarchyHandler(top->runTimeId())) {
        return false;
    }
    const auto hierarchy = Hierarchy_v4_2::hierarchyOrDefault(top);
    if (!hierarchy) {
        return false;
    }
    _levels.push_back({hierarchy->segmentWalk(), top->runTimeId(), depth});
    return true;
}

} // namespace Kiv_v4
