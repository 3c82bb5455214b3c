#pragma once

#include "records.h"

struct aiCamera;
struct aiLight;
struct aiScene;

namespace Kiv_v4::assimp {

/// Turns the importer's cameras and lights into ours. Importers do not agree on what some angles
/// mean, so it asks the scene for the one that made it.
class ObjectConversion
{
public:
    explicit ObjectConversion(const aiScene& scene);

    [[nodiscard]] CameraRecord record(const aiCamera& camera) const;
    [[nodiscard]] LightRecord record(const aiLight& light) const;

private:
    /// The angle is the vertical one times the aspect, which is not the horizontal one.
    bool _hasScaledVerticalFov = false;
    /// Cone angles are from the axis to the edge, elsewhere from edge to edge.
    bool _hasHalfConeAngles = false;
};

} // namespace Kiv_v4::assimp
