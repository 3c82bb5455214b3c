#include "assimpItem.h"

namespace Kiv_v4::assimp {

Path pathBelow(const Path& path, const SceneFile& file, NodeIndex top, NodeIndex index)
{
    PathSegment::Components way;
    for (auto node = index; node != top; node = file.node(node).parent) {
        way.push_back(file.node(node).component);
    }
    if (way.size() <= 1) {
        return way.empty() ? path : path + way.front();
    }
    const auto segment = path.segment(path.nbSegments() - 1);
    PathSegment::Components components(segment.begin(), segment.end());
    components.insert(components.end(), way.rbegin(), way.rend());
    return path.popSegment() + PathSegment(components, segment.runTimeId(), segment.separator());
}

std::shared_ptr<Item> itemBelow(const Path& path, const std::shared_ptr<FileMount>& mount,
                                NodeIndex top, NodeIndex index)
{
    return std::make_shared<Item>(pathBelow(path, *mount->file, top, index), mount, index);
}

} // namespace Kiv_v4::assimp
