#include "memoryCamera.h"

#include <utility>

#include "kiv/selection.h"

#include "memoryItem.h"
#include "nodeTypes.h"
#include "propertyCommands.h"

namespace Kiv_v4::memory {

namespace {

struct CameraRecord
{
    float horizontalAperture = 36;
    float verticalAperture = 24;
    float horizontalApertureOffset = 0;
    float verticalApertureOffset = 0;
    float fStop = 5.6F;
    float focalLength = 35;
    float focusDistance = 5;
    float nearClipPlane = 0.1F;
    float farClipPlane = 10000;
    Camera::Projection projection = Camera::Perspective;

    static void announce(const Path& path, const Node&) { Camera::notify(path); }
};

} // namespace

template <>
struct Setting<Camera::Projection>
{
    using Command = SetIntUndoableCommand;
    static std::optional<Camera::Projection> from(int value)
    {
        return value == Camera::Perspective || value == Camera::Orthographic
                   ? std::optional(static_cast<Camera::Projection>(value))
                   : std::nullopt;
    }
};

namespace {

class MemoryCamera : public Camera
{
    using Values = CameraRecord;
    using Cmd = UndoableCommand::Ptr;

public:
    explicit MemoryCamera(ItemProperties properties) : _properties(std::move(properties)) {}

    [[nodiscard]] const Path& path() const override { return _properties.path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _properties.item(); }

    [[nodiscard]] Cmd horizontalApertureCmd(float value) override
    {
        return _properties.setCmd("Set horizontal aperture of", &Values::horizontalAperture, value);
    }
    [[nodiscard]] float horizontalAperture() const override
    {
        return _properties.get(&Values::horizontalAperture);
    }

    [[nodiscard]] Cmd verticalApertureCmd(float value) override
    {
        return _properties.setCmd("Set vertical aperture of", &Values::verticalAperture, value);
    }
    [[nodiscard]] float verticalAperture() const override
    {
        return _properties.get(&Values::verticalAperture);
    }

    [[nodiscard]] Cmd horizontalApertureOffsetCmd(float value) override
    {
        return _properties.setCmd("Set horizontal aperture offset of",
                                  &Values::horizontalApertureOffset, value);
    }
    [[nodiscard]] float horizontalApertureOffset() const override
    {
        return _properties.get(&Values::horizontalApertureOffset);
    }

    [[nodiscard]] Cmd verticalApertureOffsetCmd(float value) override
    {
        return _properties.setCmd("Set vertical aperture offset of",
                                  &Values::verticalApertureOffset, value);
    }
    [[nodiscard]] float verticalApertureOffset() const override
    {
        return _properties.get(&Values::verticalApertureOffset);
    }

    [[nodiscard]] Cmd fStopCmd(float value) override
    {
        return _properties.setCmd("Set f-stop of", &Values::fStop, value);
    }
    [[nodiscard]] float fStop() const override { return _properties.get(&Values::fStop); }

    [[nodiscard]] Cmd focalLengthCmd(float value) override
    {
        return _properties.setCmd("Set focal length of", &Values::focalLength, value);
    }
    [[nodiscard]] float focalLength() const override
    {
        return _properties.get(&Values::focalLength);
    }

    [[nodiscard]] Cmd focusDistanceCmd(float value) override
    {
        return _properties.setCmd("Set focus distance of", &Values::focusDistance, value);
    }
    [[nodiscard]] float focusDistance() const override
    {
        return _properties.get(&Values::focusDistance);
    }

    [[nodiscard]] Cmd nearClipPlaneCmd(float value) override
    {
        return _properties.setCmd("Set near clip plane of", &Values::nearClipPlane, value);
    }
    [[nodiscard]] float nearClipPlane() const override
    {
        return _properties.get(&Values::nearClipPlane);
    }

    [[nodiscard]] Cmd farClipPlaneCmd(float value) override
    {
        return _properties.setCmd("Set far clip plane of", &Values::farClipPlane, value);
    }
    [[nodiscard]] float farClipPlane() const override
    {
        return _properties.get(&Values::farClipPlane);
    }

    [[nodiscard]] Cmd projectionCmd(Projection value) override
    {
        return _properties.setCmd("Set projection of", &Values::projection,
                                  static_cast<int>(value));
    }
    [[nodiscard]] Projection projection() const override
    {
        return _properties.get(&Values::projection);
    }

private:
    const ItemProperties _properties;
};

class MemoryCameraHandler : public CameraHandler
{
public:
    explicit MemoryCameraHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

    [[nodiscard]] Camera::Ptr camera(const SceneItem::Ptr& item) override
    {
        const auto* node = _tree->find(*item);
        return node && node->type == kCamera
                   ? std::make_shared<MemoryCamera>(ItemProperties(_tree, item))
                   : nullptr;
    }

    [[nodiscard]] Selection findCameras(const Path& path) override
    {
        Selection found;
        auto* top = _tree->find(path);
        if (!top) {
            return found;
        }
        for (auto* node : _tree->camerasUnder(*top)) {
            found.append(makeItem(*_tree, _tree->pathOf(*node), *node));
        }
        return found;
    }

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace

CameraHandler::Ptr makeCameraHandler(const std::shared_ptr<Tree>& tree)
{
    return std::make_shared<MemoryCameraHandler>(tree);
}

} // namespace Kiv_v4::memory
