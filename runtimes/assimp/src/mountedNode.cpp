#include "mountedNode.h"

#include "kiv/object3d.h"
#include "kiv/object3dNotification.h"
#include "kiv/transform3d.h"

namespace Kiv_v4::assimp {

template <>
TransformRecord recordInFile(const SceneFile& file, NodeIndex index)
{
    const auto matrix = file.contents().matrix(index);
    return {matrix, kit::decomposed(matrix)};
}

template <>
CameraRecord recordInFile(const SceneFile& file, NodeIndex index)
{
    return *file.contents().camera(index);
}

template <>
LightRecord recordInFile(const SceneFile& file, NodeIndex index)
{
    return *file.contents().light(index);
}

template <>
VisibilityRecord recordInFile(const SceneFile&, NodeIndex)
{
    return {};
}

template <>
void announce<TransformRecord>(const Path& path)
{
    Transform3d::notify(path);
}

template <>
void announce<CameraRecord>(const Path& path)
{
    Camera::notify(path);
}

template <>
void announce<LightRecord>(const Path& path)
{
    Light::notify(path);
}

template <>
void announce<VisibilityRecord>(const Path& path)
{
    Object3d::notify(VisibilityChanged(path));
}

const SceneItem::Ptr& MountedNode::item() const
{
    if (const auto& gateway = _mount->gateway(); !gateway.empty() && gateway != _gateway) {
        const auto path = gateway + _item->path().getSegments().back();
        _item = std::make_shared<Item>(path, _mount, _index);
        _gateway = gateway;
    }
    return _item;
}

} // namespace Kiv_v4::assimp
