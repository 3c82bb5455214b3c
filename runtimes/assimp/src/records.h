#pragma once

#include <optional>

#include "kiv/camera.h"
#include "kiv/kit/affine.h"
#include "kiv/light.h"
#include "kiv/transform3dRead.h"

namespace Kiv_v4::assimp {

// The editable data of a node, one record for each interface. The file has the records of unedited
// nodes.

/// A matrix, and its factors if it has any. The matrix is only recomputed when a factor is set, so
/// that a file's own matrix stays exact.
struct TransformRecord
{
    Matrix4d matrix;
    std::optional<kit::AffineFactors> factors;
};

struct CameraRecord
{
    float horizontalAperture = 36;
    float verticalAperture = 24;
    float horizontalApertureOffset = 0;
    float verticalApertureOffset = 0;
    float fStop = 0;
    float focalLength = 0;
    float focusDistance = 1;
    float nearClipPlane = 0;
    float farClipPlane = 0;
    Camera::Projection projection = Camera::Perspective;
};

struct LightRecord
{
    Light::Type type = Light::Other; ///< Not edited.
    float intensity = 1;
    Color3f color{{1, 1, 1}};
    bool shadowEnable = true;
    Color3f shadowColor;
    float diffuse = 1;
    float specular = 1;
    float angle = 0;
    Light::SphereProps sphere{0, true};
    Light::ConeProps cone;
    bool normalize = false;
};

struct VisibilityRecord
{
    bool visible = true;
};

} // namespace Kiv_v4::assimp
