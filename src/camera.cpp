#include "kiv/camera.h"

#include "kiv/cameraHandler.h"
#include "kiv/cameraNotification.h"

#include "detail/dispatch.h"
#include "detail/executeIfAny.h"
#include "detail/itemObserverRegistry.h"

namespace Kiv_v4 {

namespace {
using ObservedItems = detail::ItemObserverRegistry<CameraChanged>;
} // namespace

Camera::Camera() = default;

Camera::~Camera() = default;

Camera::Ptr Camera::camera(const SceneItem::Ptr& item)
{
    return detail::dispatch("camera", "src/camera", item, &RunTimeMgr::cameraHandler,
                            [&](auto& handler) { return handler.camera(item); });
}

void Camera::horizontalAperture(float value)
{
    detail::executeIfAny(horizontalApertureCmd(value));
}

void Camera::verticalAperture(float value)
{
    detail::executeIfAny(verticalApertureCmd(value));
}

void Camera::horizontalApertureOffset(float value)
{
    detail::executeIfAny(horizontalApertureOffsetCmd(value));
}

void Camera::verticalApertureOffset(float value)
{
    detail::executeIfAny(verticalApertureOffsetCmd(value));
}

void Camera::fStop(float value)
{
    detail::executeIfAny(fStopCmd(value));
}

void Camera::focalLength(float value)
{
    detail::executeIfAny(focalLengthCmd(value));
}

void Camera::focusDistance(float value)
{
    detail::executeIfAny(focusDistanceCmd(value));
}

void Camera::nearClipPlane(float value)
{
    detail::executeIfAny(nearClipPlaneCmd(value));
}

void Camera::farClipPlane(float value)
{
    detail::executeIfAny(farClipPlaneCmd(value));
}

void Camera::projection(Projection value)
{
    detail::executeIfAny(projectionCmd(value));
}

bool Camera::addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().add(item, observer);
}

bool Camera::removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().remove(item, observer);
}

bool Camera::removeObserver(const Path& path, const Observer::Ptr& observer)
{
    return ObservedItems::instance().remove(path, observer);
}

std::size_t Camera::nbObservers(const SceneItem::Ptr& item)
{
    return ObservedItems::instance().count(item);
}

bool Camera::hasObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().has(item, observer);
}

bool Camera::hasObservers(const Path& path)
{
    return ObservedItems::instance().hasAny(path);
}

bool Camera::hasObservers(Rtid runTimeId)
{
    return ObservedItems::instance().hasAny(runTimeId);
}

void Camera::notify(const Path& path)
{
    ObservedItems::instance().notify(path);
}

CameraChanged::CameraChanged(const SceneItem::Ptr& item) : _item(item) {}

CameraChanged::~CameraChanged() = default;

} // namespace Kiv_v4
