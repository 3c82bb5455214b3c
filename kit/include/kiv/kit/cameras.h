#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "kiv/camera.h"
#include "kiv/cameraHandler.h"
#include "kiv/export.h"
#include "kiv/path.h"

namespace Kiv_v4::kit {

/// The values of a camera, in the units of `Camera`. New ones are those of `CameraBase`.
struct CameraValues
{
    float horizontalAperture = 36;      ///< In millimetres.
    float verticalAperture = 24;        ///< In millimetres.
    float horizontalApertureOffset = 0; ///< In millimetres, to the right.
    float verticalApertureOffset = 0;   ///< In millimetres, upward.
    float fStop = 0;                    ///< As `Camera::fStop`.
    float focalLength = 50;             ///< In millimetres.
    float focusDistance = 1;            ///< In scene units.
    float nearClipPlane = 0.1F;         ///< In scene units.
    float farClipPlane = 10000;         ///< In scene units.
    /// The kind of projection.
    Camera::Projection projection = Camera::Perspective;
};

/// For data that give and take all values of a camera at once.
struct CameraAccess
{
    /// Returns the values of the camera at a path; `std::nullopt` if there is no such item or it is
    /// not a camera.
    std::function<std::optional<CameraValues>(const Path& path)> get;
    /// Writes the values; must throw if it cannot. Empty if nothing can be edited. The kit
    /// announces the change.
    std::function<void(const Path& path, const CameraValues& values)> set;
};

/// Returns a handler of complete cameras, with undo, drags and notifications; NaN and infinity are
/// refused. It finds the cameras under a path by a walk that calls `access.get` for each item.
[[nodiscard]] KIV_EXPORT CameraHandler::Ptr cameraHandler(CameraAccess access);

/// A camera on values that `Source`, a copyable class, keeps for one item:
///
///     const SceneItem::Ptr& item() const;
///     Value get(Value CameraValues::*member) const;
///     UndoableCommand::Ptr setCmd(const std::string& verb, Value CameraValues::*member,
///                                 arguments...) const;
///
/// `setCmd` gets the arguments of `Setting<Value>::from`.
template <class Source>
class CameraOf : public Camera
{
    using Cmd = UndoableCommand::Ptr;
    using Values = CameraValues;

public:
    explicit CameraOf(Source source) : _source(std::move(source)) {}

    [[nodiscard]] const Path& path() const override { return _source.item()->path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _source.item(); }

    [[nodiscard]] Cmd horizontalApertureCmd(float value) override
    {
        return _source.setCmd("Set horizontal aperture of", &Values::horizontalAperture, value);
    }
    [[nodiscard]] float horizontalAperture() const override
    {
        return _source.get(&Values::horizontalAperture);
    }

    [[nodiscard]] Cmd verticalApertureCmd(float value) override
    {
        return _source.setCmd("Set vertical aperture of", &Values::verticalAperture, value);
    }
    [[nodiscard]] float verticalAperture() const override
    {
        return _source.get(&Values::verticalAperture);
    }

    [[nodiscard]] Cmd horizontalApertureOffsetCmd(float value) override
    {
        return _source.setCmd("Set horizontal aperture offset of",
                              &Values::horizontalApertureOffset, value);
    }
    [[nodiscard]] float horizontalApertureOffset() const override
    {
        return _source.get(&Values::horizontalApertureOffset);
    }

    [[nodiscard]] Cmd verticalApertureOffsetCmd(float value) override
    {
        return _source.setCmd("Set vertical aperture offset of", &Values::verticalApertureOffset,
                              value);
    }
    [[nodiscard]] float verticalApertureOffset() const override
    {
        return _source.get(&Values::verticalApertureOffset);
    }

    [[nodiscard]] Cmd fStopCmd(float value) override
    {
        return _source.setCmd("Set f-stop of", &Values::fStop, value);
    }
    [[nodiscard]] float fStop() const override { return _source.get(&Values::fStop); }

    [[nodiscard]] Cmd focalLengthCmd(float value) override
    {
        return _source.setCmd("Set focal length of", &Values::focalLength, value);
    }
    [[nodiscard]] float focalLength() const override { return _source.get(&Values::focalLength); }

    [[nodiscard]] Cmd focusDistanceCmd(float value) override
    {
        return _source.setCmd("Set focus distance of", &Values::focusDistance, value);
    }
    [[nodiscard]] float focusDistance() const override
    {
        return _source.get(&Values::focusDistance);
    }

    [[nodiscard]] Cmd nearClipPlaneCmd(float value) override
    {
        return _source.setCmd("Set near clip plane of", &Values::nearClipPlane, value);
    }
    [[nodiscard]] float nearClipPlane() const override
    {
        return _source.get(&Values::nearClipPlane);
    }

    [[nodiscard]] Cmd farClipPlaneCmd(float value) override
    {
        return _source.setCmd("Set far clip plane of", &Values::farClipPlane, value);
    }
    [[nodiscard]] float farClipPlane() const override { return _source.get(&Values::farClipPlane); }

    [[nodiscard]] Cmd projectionCmd(Projection value) override
    {
        return _source.setCmd("Set projection of", &Values::projection, static_cast<int>(value));
    }
    [[nodiscard]] Projection projection() const override
    {
        return _source.get(&Values::projection);
    }

protected:
    /// Returns the values' source.
    [[nodiscard]] const Source& source() const noexcept { return _source; }

private:
    const Source _source;
};

} // namespace Kiv_v4::kit
