#include "assimpLight.h"

#include "kiv/kit/handlers.h"

namespace Kiv_v4::assimp {

LightHandler::Ptr makeLightHandler(const std::shared_ptr<const Mounts>& mounts)
{
    return kit::lightHandler([mounts](const SceneItem::Ptr& item) -> Light::Ptr {
        const auto node = mounts->node(item);
        return node && node->file().contents().light(node->index())
                   ? std::make_shared<kit::LightOf<MountedNode>>(*node)
                   : nullptr;
    });
}

} // namespace Kiv_v4::assimp
