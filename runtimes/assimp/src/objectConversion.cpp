#include "objectConversion.h"

#include <algorithm>
#include <array>
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

/// The focal length for a film back of that width or height and the angle; if the angle is invalid,
/// the importer's default counts instead.
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

using Vector = std::array<double, 3>;

Vector vector(const aiVector3D& from)
{
    return {from.x, from.y, from.z};
}

Vector cross(const Vector& a, const Vector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// `std::nullopt` for a vector without direction.
std::optional<Vector> normalized(const Vector& from)
{
    const auto length = std::hypot(from[0], from[1], from[2]);
    if (!std::isfinite(length) || length == 0) {
        return std::nullopt;
    }
    return Vector{from[0] / length, from[1] / length, from[2] / length};
}

/// The direction at a right angle to `forward` that is closest to `up`.
Vector rightOf(const Vector& forward, const Vector& up)
{
    constexpr auto kAlongForward = 1e-6;
    const auto right = cross(forward, up);
    if (std::hypot(right[0], right[1], right[2]) > kAlongForward) {
        return *normalized(right);
    }
    const auto isSteep = std::abs(forward[1]) > 0.5;
    return *normalized(cross(forward, isSteep ? Vector{0, 0, -1} : Vector{0, 1, 0}));
}

/// The matrix that places an object, which looks along -z with +y upward, at `position` with the
/// direction `look`; without rotation if `look` is not a direction.
std::optional<Matrix4d> placed(const aiVector3D& position, const aiVector3D& look,
                               const aiVector3D& up)
{
    auto matrix = kit::identity();
    if (const auto forward = normalized(vector(look))) {
        const auto right = rightOf(*forward, normalized(vector(up)).value_or(Vector{0, 1, 0}));
        const auto above = cross(right, *forward);
        const auto& [x, y, z] = *forward;
        matrix.matrix[0] = {right[0], right[1], right[2], 0};
        matrix.matrix[1] = {above[0], above[1], above[2], 0};
        matrix.matrix[2] = {-x, -y, -z, 0};
    }
    if (normalized(vector(position))) {
        matrix.matrix[3] = {position.x, position.y, position.z, 1};
    }
    return matrix == kit::identity() ? std::nullopt : std::optional(matrix);
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
        _placesWithinNodes = name.starts_with("Autodesk FBX") || name.starts_with("Neutral File");
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
    record.sphere.asPoint = true; // files have no radius
    const auto shining =
        color(light.mType == aiLightSource_AMBIENT ? light.mColorAmbient : light.mColorDiffuse);
    record.intensity = std::max(largest(shining), 0.0F);
    if (record.intensity > 0) {
        const auto& [r, g, b] = shining.color;
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

std::optional<Matrix4d> ObjectConversion::placement(const aiCamera& camera) const
{
    return _placesWithinNodes ? placed(camera.mPosition, camera.mLookAt, camera.mUp) : std::nullopt;
}

std::optional<Matrix4d> ObjectConversion::placement(const aiLight& light) const
{
    return _placesWithinNodes ? placed(light.mPosition, light.mDirection, light.mUp) : std::nullopt;
}

} // namespace Kiv_v4::assimp
