#include "assimpCamera.h"

#include <utility>

#include "kiv/selection.h"

namespace Kiv_v4::assimp {

namespace {

using AssimpCamera = kit::CameraOf<MountedNode>;

class AssimpCameraHandler : public CameraHandler
{
public:
    explicit AssimpCameraHandler(std::shared_ptr<const Mounts> mounts) : _mounts(std::move(mounts))
    {}

    [[nodiscard]] Camera::Ptr camera(const SceneItem::Ptr& item) override
    {
        const auto node = _mounts->node(item);
        return node && node->file().contents().camera(node->index())
                   ? std::make_shared<AssimpCamera>(*node)
                   : nullptr;
    }

    [[nodiscard]] Selection findCameras(const Path& path) override
    {
        Selection found;
        if (const auto top = _mounts->item(path)) {
            for (const auto index : top->file().cameras(top->index())) {
                found.append(itemBelow(path, top->mount(), top->index(), index));
            }
        }
        return found;
    }

private:
    const std::shared_ptr<const Mounts> _mounts;
};

} // namespace

CameraHandler::Ptr makeCameraHandler(const std::shared_ptr<const Mounts>& mounts)
{
    return std::make_shared<AssimpCameraHandler>(mounts);
}

} // namespace Kiv_v4::assimp
