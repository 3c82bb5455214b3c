#include "assimpMaterial.h"

#include <utility>

namespace Kiv_v4::assimp {

namespace {

class AssimpMaterial : public Material
{
public:
    AssimpMaterial(std::shared_ptr<const Mounts> mounts, MountedNode node)
        : _mounts(std::move(mounts)), _node(std::move(node))
    {}

    /// Empty once the file is no longer mounted.
    [[nodiscard]] std::vector<SceneItem::Ptr> materials() const override
    {
        std::vector<SceneItem::Ptr> items;
        if (_node.isMounted()) {
            for (const auto index : *_node.file().contents().materials(_node.index())) {
                items.push_back(_mounts->materialItem(_node.mount(), index));
            }
        }
        return items;
    }

private:
    const std::shared_ptr<const Mounts> _mounts;
    const MountedNode _node;
};

class AssimpMaterialHandler : public MaterialHandler
{
public:
    explicit AssimpMaterialHandler(std::shared_ptr<const Mounts> mounts)
        : _mounts(std::move(mounts))
    {}

    [[nodiscard]] Material::Ptr material(const SceneItem::Ptr& item) override
    {
        const auto node = _mounts->node(item);
        return node && node->file().contents().materials(node->index())
                   ? std::make_shared<AssimpMaterial>(_mounts, *node)
                   : nullptr;
    }

private:
    const std::shared_ptr<const Mounts> _mounts;
};

} // namespace

MaterialHandler::Ptr makeMaterialHandler(const std::shared_ptr<const Mounts>& mounts)
{
    return std::make_shared<AssimpMaterialHandler>(mounts);
}

} // namespace Kiv_v4::assimp
