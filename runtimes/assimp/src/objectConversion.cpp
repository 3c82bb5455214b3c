#include "objectConversion.h"

#include <algorithm>
#include <assimp/commonMetaData.h>
#include <assimp/scene.h>
#include <cmath>
#include <numbers>
#include <string_view>

namespace Kiv_v4::assimp {

namespace {

constexpr auto kPi = std::numbers::pi_v<float>;

float degrees(float radians)
{
    return std::isfinite(radians) ? radians * 180 / kPi : 0;
}

float finite(float number)
{
    return std::isfinite(number) ? number : 0;
}

bool isPositive(float number)
{
    return std::isfinite(number) && number > 0;
}

/// The length at which a film back that wide or high is seen under the angle, which is replaced by
/// the importer's usual one when it is none.
float focalLength(float aperture, float angle)
{
    const auto usable = isPositive(angle) && angle < kPi ? angle : aiCamera().mHorizontalFOV;
    return aperture / (2 * std::tan(usable / 2));
}

Color3f color(const aiColor3D& from)
{
    return {{finite(from.r), finite(from.g), finite(from.b)}};
}

float largest(const Color3f& from)
{
    return *std::max_element(from.color.begin(), from.color.end());
}

Light::Type kind(aiLightSourceType type)
{
    switch (type) {
    case aiLightSource_DIRECTIONAL:
        return Light::Directional;
    case aiLightSource_POINT:
        return Light::Point;
    case aiLightSource_SPOT:
        return Light::Spot;
    case aiLightSource_AREA:
        return Light::Area;
    default:
        return Light::Other;
    }
}

} // namespace

ObjectConversion::ObjectConversion(const aiScene& scene)
{
    aiString format;
    if (scene.mMetaData && scene.mMetaData->Get(AI_METADATA_SOURCE_FORMAT, format)) {
        const std::string_view name(format.C_Str());
        _hasScaledVerticalFov = name.starts_with("glTF");
        _hasHalfConeAngles = name.starts_with("glTF2");
    }
}

CameraRecord ObjectConversion::record(const aiCamera& camera) const
{
    CameraRecord record;
    record.nearClipPlane = finite(camera.mClipPlaneNear);
    record.farClipPlane = finite(camera.mClipPlaneFar);
    if (isPositive(camera.mOrthographicWidth)) {
        record.projection = Camera::Orthographic;
        record.horizontalAperture = 2 * camera.mOrthographicWidth;
        record.verticalAperture = record.horizontalAperture * 2 / 3;
    }
    if (isPositive(camera.mAspect)) {
        record.verticalAperture = record.horizontalAperture / camera.mAspect;
    }
    record.focalLength =
        _hasScaledVerticalFov
            ? focalLength(record.verticalAperture,
                          camera.mHorizontalFOV / (camera.mAspect > 0 ? camera.mAspect : 1))
            : focalLength(record.horizontalAperture, camera.mHorizontalFOV);
    return record;
}

LightRecord ObjectConversion::record(const aiLight& light) const
{
    LightRecord record;
    record.type = kind(light.mType);
    const auto diffuse = color(light.mColorDiffuse);
    record.intensity = std::max(largest(diffuse), 0.0F);
    if (record.intensity > 0) {
        const auto& [r, g, b] = diffuse.color;
        record.color = {{r / record.intensity, g / record.intensity, b / record.intensity}};
        record.specular = largest(color(light.mColorSpecular)) / record.intensity;
    }
    if (record.type == Light::Spot) {
        const auto full = _hasHalfConeAngles ? 2.0F : 1.0F;
        record.cone.coneAngle = full * degrees(light.mAngleInnerCone);
        record.cone.penumbraAngle =
            std::max(full * degrees(light.mAngleOuterCone) - record.cone.coneAngle, 0.0F) / 2;
    }
    return record;
}

} // namespace Kiv_v4::assimp
