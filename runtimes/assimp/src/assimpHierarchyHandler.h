#pragma once

#include <memory>
#include <utility>

#include "kiv/hierarchyHandler.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

class AssimpHierarchyHandler : public HierarchyHandler
{
public:
    explicit AssimpHierarchyHandler(std::shared_ptr<const Mounts> mounts);

    [[nodiscard]] Hierarchy::Ptr hierarchy(const SceneItem::Ptr& item) override;
    [[nodiscard]] SceneItem::Ptr createItem(const Path& path) override;
    [[nodiscard]] SceneItemList rootItems(const Path& gateway) override;

private:
    const std::shared_ptr<const Mounts> _mounts;
};

} // namespace Kiv_v4::assimp
