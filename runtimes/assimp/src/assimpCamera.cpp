#include "assimpCamera.h"

#include <utility>

#include "kiv/selection.h"

namespace Kiv_v4::assimp {

namespace {

bool setProjection(CameraRecord& record, int projection)
{
    const auto known = projection == Camera::Perspective || projection == Camera::Orthographic;
    if (known) {
        record.projection = static_cast<Camera::Projection>(projection);
    }
    return known;
}

class AssimpCamera : public Camera
{
    using Cmd = UndoableCommand::Ptr;
    using Values = CameraRecord;

public:
    explicit AssimpCamera(MountedNode node) : _node(std::move(node)) {}

    [[nodiscard]] const Path& path() const override { return _node.item()->path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _node.item(); }

    [[nodiscard]] Cmd horizontalApertureCmd(float value) override
    {
        return floatCmd("Set horizontal aperture of", &Values::horizontalAperture, value);
    }
    [[nodiscard]] float horizontalAperture() const override
    {
        return _node.get(&Values::horizontalAperture);
    }

    [[nodiscard]] Cmd verticalApertureCmd(float value) override
    {
        return floatCmd("Set vertical aperture of", &Values::verticalAperture, value);
    }
    [[nodiscard]] float verticalAperture() const override
    {
        return _node.get(&Values::verticalAperture);
    }

    [[nodiscard]] Cmd horizontalApertureOffsetCmd(float value) override
    {
        return floatCmd("Set horizontal aperture offset of", &Values::horizontalApertureOffset,
                        value);
    }
    [[nodiscard]] float horizontalApertureOffset() const override
    {
        return _node.get(&Values::horizontalApertureOffset);
    }

    [[nodiscard]] Cmd verticalApertureOffsetCmd(float value) override
    {
        return floatCmd("Set vertical aperture offset of", &Values::verticalApertureOffset, value);
    }
    [[nodiscard]] float verticalApertureOffset() const override
    {
        return _node.get(&Values::verticalApertureOffset);
    }

    [[nodiscard]] Cmd fStopCmd(float value) override
    {
        return floatCmd("Set f-stop of", &Values::fStop, value);
    }
    [[nodiscard]] float fStop() const override { return _node.get(&Values::fStop); }

    [[nodiscard]] Cmd focalLengthCmd(float value) override
    {
        return floatCmd("Set focal length of", &Values::focalLength, value);
    }
    [[nodiscard]] float focalLength() const override { return _node.get(&Values::focalLength); }

    [[nodiscard]] Cmd focusDistanceCmd(float value) override
    {
        return floatCmd("Set focus distance of", &Values::focusDistance, value);
    }
    [[nodiscard]] float focusDistance() const override { return _node.get(&Values::focusDistance); }

    [[nodiscard]] Cmd nearClipPlaneCmd(float value) override
    {
        return floatCmd("Set near clip plane of", &Values::nearClipPlane, value);
    }
    [[nodiscard]] float nearClipPlane() const override { return _node.get(&Values::nearClipPlane); }

    [[nodiscard]] Cmd farClipPlaneCmd(float value) override
    {
        return floatCmd("Set far clip plane of", &Values::farClipPlane, value);
    }
    [[nodiscard]] float farClipPlane() const override { return _node.get(&Values::farClipPlane); }

    [[nodiscard]] Cmd projectionCmd(Projection value) override
    {
        return _node.changeCmd<SetIntUndoableCommand>("Set projection of", &setProjection,
                                                      static_cast<int>(value));
    }
    [[nodiscard]] Projection projection() const override { return _node.get(&Values::projection); }

private:
    [[nodiscard]] Cmd floatCmd(const char* verb, float Values::*member, float value) const
    {
        return _node.assignCmd<SetFloatUndoableCommand>(verb, member, value);
    }

    const MountedNode _node;
};

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
