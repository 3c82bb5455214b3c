#pragma once

#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"

namespace Kiv_v4 {

/// Three numbers, such as a translation in scene units.
using Vector3d = TypedVectorN<double, 3>;

/// A transform in the convention of `Transform3dRead`.
using Matrix4d = TypedSquareMatrixN<double, 4>;

/// Red, green and blue, linear.
using Color3f = TypedColorN<float, 3>;

} // namespace Kiv_v4
