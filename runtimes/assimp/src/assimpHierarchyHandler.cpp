#include "assimpHierarchyHandler.h"

#include <utility>

#include "assimpHierarchy.h"

namespace Kiv_v4::assimp {

AssimpHierarchyHandler::AssimpHierarchyHandler(std::shared_ptr<const Mounts> mounts)
    : _mounts(std::move(mounts))
{}

Hierarchy::Ptr AssimpHierarchyHandler::hierarchy(const SceneItem::Ptr& item)
{
    return std::make_shared<AssimpHierarchy>(_mounts, item);
}

SceneItem::Ptr AssimpHierarchyHandler::createItem(const Path& path)
{
    return _mounts->item(path);
}

SceneItemList AssimpHierarchyHandler::rootItems(const Path& gateway)
{
    const auto root = _mounts->rootItem(gateway);
    return root ? SceneItemList{root} : SceneItemList();
}

} // namespace Kiv_v4::assimp
