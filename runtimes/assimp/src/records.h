#pragma once

#include <optional>

#include "kiv/kit/affine.h"
#include "kiv/kit/cameras.h"
#include "kiv/kit/lights.h"
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

using CameraRecord = kit::CameraValues;
using LightRecord = kit::LightValues;

struct VisibilityRecord
{
    bool visible = true;
};

} // namespace Kiv_v4::assimp
