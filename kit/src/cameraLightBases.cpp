#include <utility>

#include "kiv/kit/bases.h"

namespace Kiv_v4::kit {

CameraBase::CameraBase(SceneItem::Ptr item) : _item(std::move(item)) {}
CameraBase::~CameraBase() = default;

UndoableCommand::Ptr CameraBase::horizontalApertureCmd(float)
{
    return nullptr;
}

float CameraBase::horizontalAperture() const
{
    return 36;
}

UndoableCommand::Ptr CameraBase::verticalApertureCmd(float)
{
    return nullptr;
}

float CameraBase::verticalAperture() const
{
    return 24;
}

UndoableCommand::Ptr CameraBase::horizontalApertureOffsetCmd(float)
{
    return nullptr;
}

float CameraBase::horizontalApertureOffset() const
{
    return 0;
}

UndoableCommand::Ptr CameraBase::verticalApertureOffsetCmd(float)
{
    return nullptr;
}

float CameraBase::verticalApertureOffset() const
{
    return 0;
}

UndoableCommand::Ptr CameraBase::fStopCmd(float)
{
    return nullptr;
}

float CameraBase::fStop() const
{
    return 0;
}

UndoableCommand::Ptr CameraBase::focalLengthCmd(float)
{
    return nullptr;
}

float CameraBase::focalLength() const
{
    return 50;
}

UndoableCommand::Ptr CameraBase::focusDistanceCmd(float)
{
    return nullptr;
}

float CameraBase::focusDistance() const
{
    return 1;
}

UndoableCommand::Ptr CameraBase::nearClipPlaneCmd(float)
{
    return nullptr;
}

float CameraBase::nearClipPlane() const
{
    return 0.1F;
}

UndoableCommand::Ptr CameraBase::farClipPlaneCmd(float)
{
    return nullptr;
}

float CameraBase::farClipPlane() const
{
    return 10000;
}

UndoableCommand::Ptr CameraBase::projectionCmd(Projection)
{
    return nullptr;
}

Camera::Projection CameraBase::projection() const
{
    return Perspective;
}

LightBase::LightBase(SceneItem::Ptr item) : _item(std::move(item)) {}
LightBase::~LightBase() = default;

Light::Type LightBase::type() const
{
    return Other;
}

UndoableCommand::Ptr LightBase::intensityCmd(float)
{
    return nullptr;
}

float LightBase::intensity() const
{
    return 1;
}

UndoableCommand::Ptr LightBase::colorCmd(float, float, float)
{
    return nullptr;
}

Color3f LightBase::color() const
{
    return {{1, 1, 1}};
}

UndoableCommand::Ptr LightBase::shadowEnableCmd(bool)
{
    return nullptr;
}

bool LightBase::shadowEnable() const
{
    return false;
}

UndoableCommand::Ptr LightBase::shadowColorCmd(float, float, float)
{
    return nullptr;
}

Color3f LightBase::shadowColor() const
{
    return {};
}

UndoableCommand::Ptr LightBase::diffuseCmd(float)
{
    return nullptr;
}

float LightBase::diffuse() const
{
    return 1;
}

UndoableCommand::Ptr LightBase::specularCmd(float)
{
    return nullptr;
}

float LightBase::specular() const
{
    return 1;
}

std::shared_ptr<Light::DirectionalInterface> LightBase::directionalInterfaceImpl()
{
    return nullptr;
}

std::shared_ptr<Light::SphereInterface> LightBase::sphereInterfaceImpl()
{
    return nullptr;
}

std::shared_ptr<Light::ConeInterface> LightBase::coneInterfaceImpl()
{
    return nullptr;
}

std::shared_ptr<Light::AreaInterface> LightBase::areaInterfaceImpl()
{
    return nullptr;
}

} // namespace Kiv_v4::kit
