#pragma once

#include <cstring>

#include "kiv/camera.h"
#include "kiv/light.h"
#include "kiv/transform3d.h"

namespace app {

// The properties of interfaces that are plain values, by the keys that JSON has for them: what
// reads, writes and edits all of them goes through these tables.

/// A property of an interface.
template <class Interface, class Value, class... Arguments>
struct Field
{
    const char* key;
    Value (Interface::*get)() const;
    Kiv_v4::UndoableCommand::Ptr (Interface::*setCmd)(Arguments...);
};

using TransformField = Field<Kiv_v4::Transform3d, Kiv_v4::Vector3d, double, double, double>;
using CameraField = Field<Kiv_v4::Camera, float, float>;
using LightField = Field<Kiv_v4::Light, float, float>;
using LightColorField = Field<Kiv_v4::Light, Kiv_v4::Color3f, float, float, float>;

inline constexpr TransformField kTranslation{"translation", &Kiv_v4::Transform3d::translation,
                                             &Kiv_v4::Transform3d::translateCmd};
inline constexpr TransformField kScale{"scale", &Kiv_v4::Transform3d::scale,
                                       &Kiv_v4::Transform3d::scaleCmd};
inline constexpr TransformField kRotation{"rotation", &Kiv_v4::Transform3d::rotation,
                                          &Kiv_v4::Transform3d::rotateCmd};
inline constexpr TransformField kShear{"shear", &Kiv_v4::Transform3d::shear,
                                       &Kiv_v4::Transform3d::shearCmd};

inline constexpr TransformField kTransformFields[] = {
    kTranslation,
    kRotation,
    kScale,
    kShear,
    {"rotatePivot", &Kiv_v4::Transform3d::rotatePivot, &Kiv_v4::Transform3d::rotatePivotCmd},
    {"scalePivot", &Kiv_v4::Transform3d::scalePivot, &Kiv_v4::Transform3d::scalePivotCmd},
    {"rotatePivotTranslation", &Kiv_v4::Transform3d::rotatePivotTranslation,
     &Kiv_v4::Transform3d::translateRotatePivotCmd},
    {"scalePivotTranslation", &Kiv_v4::Transform3d::scalePivotTranslation,
     &Kiv_v4::Transform3d::translateScalePivotCmd},
    {"rotateAxis", &Kiv_v4::Transform3d::rotateAxis, &Kiv_v4::Transform3d::rotateAxisCmd}};

/// The factors of a file item's matrix, which does not tell them exactly.
inline constexpr TransformField kFactors[] = {kTranslation, kRotation, kScale, kShear};

/// The value of a new item.
inline Kiv_v4::Vector3d initialValue(const TransformField& field)
{
    return field.key == kScale.key ? Kiv_v4::Vector3d({1, 1, 1}) : Kiv_v4::Vector3d();
}

inline constexpr CameraField kCameraFields[] = {
    {"focalLength", &Kiv_v4::Camera::focalLength, &Kiv_v4::Camera::focalLengthCmd},
    {"horizontalAperture", &Kiv_v4::Camera::horizontalAperture,
     &Kiv_v4::Camera::horizontalApertureCmd},
    {"verticalAperture", &Kiv_v4::Camera::verticalAperture, &Kiv_v4::Camera::verticalApertureCmd},
    {"horizontalApertureOffset", &Kiv_v4::Camera::horizontalApertureOffset,
     &Kiv_v4::Camera::horizontalApertureOffsetCmd},
    {"verticalApertureOffset", &Kiv_v4::Camera::verticalApertureOffset,
     &Kiv_v4::Camera::verticalApertureOffsetCmd},
    {"fStop", &Kiv_v4::Camera::fStop, &Kiv_v4::Camera::fStopCmd},
    {"focusDistance", &Kiv_v4::Camera::focusDistance, &Kiv_v4::Camera::focusDistanceCmd},
    {"nearClipPlane", &Kiv_v4::Camera::nearClipPlane, &Kiv_v4::Camera::nearClipPlaneCmd},
    {"farClipPlane", &Kiv_v4::Camera::farClipPlane, &Kiv_v4::Camera::farClipPlaneCmd}};

inline constexpr LightField kLightFields[] = {
    {"intensity", &Kiv_v4::Light::intensity, &Kiv_v4::Light::intensityCmd},
    {"diffuse", &Kiv_v4::Light::diffuse, &Kiv_v4::Light::diffuseCmd},
    {"specular", &Kiv_v4::Light::specular, &Kiv_v4::Light::specularCmd}};

inline constexpr LightColorField kLightColorFields[] = {
    {"color", &Kiv_v4::Light::color, &Kiv_v4::Light::colorCmd},
    {"shadowColor", &Kiv_v4::Light::shadowColor, &Kiv_v4::Light::shadowColorCmd}};

/// Whether two values of plain numbers are the same bit for bit, which tells 0 from -0.
template <class T>
bool sameBits(const T& left, const T& right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

} // namespace app
