#pragma once

#include <optional>

#include "records.h"

struct aiCamera;
struct aiLight;
struct aiScene;

namespace Kiv_v4::assimp {

/// Turns the importer's cameras and lights into ours. Importers do not agree on what some angles
/// mean and on where a camera looks within its node, so it asks the scene for the one that made it.
class ObjectConversion
{
public:
    explicit ObjectConversion(const aiScene& scene);

    [[nodiscard]] CameraRecord record(const aiCamera& camera) const;
    [[nodiscard]] LightRecord record(const aiLight& light) const;

    // From the space of a camera or light of ours, which looks along -z with +y upward, to that of
    // its node; none when they are the same.

    [[nodiscard]] std::optional<Matrix4d> placement(const aiCamera& camera) const;
    [[nodiscard]] std::optional<Matrix4d> placement(const aiLight& light) const;

private:
    /// The angle is the vertical one times the aspect, which is not the horizontal one.
    bool _hasScaledVerticalFov = false;
    /// Cone angles are from the axis to the edge, elsewhere from edge to edge.
    bool _hasHalfConeAngles = false;
    /// Position and direction within the node are what the file means. Other importers turn the
    /// node instead and leave numbers there that mean nothing.
    bool _placesWithinNodes = false;
};

} // namespace Kiv_v4::assimp
