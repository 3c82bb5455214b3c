#include "item.h"

#include <algorithm>

namespace Kiv_v4::assimp {

std::shared_ptr<Item> itemBelow(const Path& path, const std::shared_ptr<const SceneFile>& file,
                                NodeIndex top, NodeIndex index)
{
    PathSegment::Components way;
    for (auto node = index; node != top; node = file->node(node).parent) {
        way.push_back(file->node(node).component);
    }
    auto itemPath = path;
    std::for_each(way.rbegin(), way.rend(),
                  [&itemPath](const auto& component) { itemPath = itemPath + component; });
    return std::make_shared<Item>(itemPath, file, index);
}

} // namespace Kiv_v4::assimp
