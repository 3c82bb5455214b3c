#pragma once

#include <optional>

#include "records.h"

struct aiCamera;
struct aiLight;
struct aiScene;

namespace Kiv_v4::assimp {

/// Converts the importer's cameras and lights. Importers differ in the meaning of some angles and
/// in the direction of a camera within its node, so it reads from the scene which importer made it.
class ObjectConversion
{
public:
    explicit ObjectConversion(const aiScene& scene);

    [[nodiscard]] CameraRecord record(const aiCamera& camera) const;
    [[nodiscard]] LightRecord record(const aiLight& light) const;

    // From the space of a camera or light of ours, which looks along -z with +y upward, to that of
    // its node; `std::nullopt` if they are the same.

    [[nodiscard]] std::optional<Matrix4d> placement(const aiCamera& camera) const;
    [[nodiscard]] std::optional<Matrix4d> placement(const aiLight& light) const;

private:
    /// The angle is the vertical one times the aspect ratio, which is not the horizontal one.
    bool _hasScaledVerticalFov = false;
    /// Cone angles are from the axis to the edge, elsewhere from edge to edge.
    bool _hasHalfConeAngles = false;
    /// Position and direction within the node are valid. Other importers rotate the node instead
    /// and leave meaningless numbers there.
    bool _placesWithinNodes = false;
};

} // namespace Kiv_v4::assimp
