#include "hierarchyHandler.h"

#include <utility>

#include "hierarchy.h"

namespace Kiv_v4::assimp {

AssimpHierarchyHandler::AssimpHierarchyHandler(std::shared_ptr<const Mounts> mounts)
    : _mounts(std::move(mounts))
{}

Hierarchy::Ptr AssimpHierarchyHandler::hierarchy(SceneItem::Ptr const& item)
{
    return std::make_shared<AssimpHierarchy>(_mounts, item);
}

SceneItem::Ptr AssimpHierarchyHandler::createItem(Path const& path)
{
    return _mounts->item(path);
}

SceneItemList AssimpHierarchyHandler::rootItems(Path const& gateway)
{
    const auto root = _mounts->rootItem(gateway);
    return root ? SceneItemList{root} : SceneItemList();
}

} // namespace Kiv_v4::assimp
