#include "nodeTypes.h"

#include <algorithm>

namespace Kiv_v4::memory {

namespace {

NodeType light(const char* type, const char* displayName, const char* description, Light::Type kind)
{
    return {.type = type,
            .displayName = displayName,
            .description = description,
            .classifications = {"Light"},
            .light = kind};
}

std::vector<NodeType> makeNodeTypes()
{
    const std::vector<TypeAttribute> ofMesh = {
        {"doubleSided", "Double Sided", false, "Whether the back of a face is seen."},
        {"subdivisionLevel", "Subdivision Level", 0, "How often faces are divided when drawn."},
        {"file", "File", std::string(), "Where the mesh was read from."}};
    const std::vector<TypeAttribute> ofCamera = {
        {"exposure", "Exposure", 0.0F, "Brightens the picture, in stops."},
        {"shutterAngle", "Shutter Angle", 180.0F, "How long the shutter is open, in degrees."}};
    const std::vector<TypeAttribute> ofMaterial = {
        {"baseColor", "Base Color", Color3f({0.8F, 0.8F, 0.8F}), "The colour of the surface."},
        {"metalness", "Metalness", 0.0F, "From 0 for an insulator to 1 for a metal."},
        {"roughness", "Roughness", 0.5F, "From 0 for a mirror to 1 for a matt surface."},
        {"emission", "Emission", Color3f(), "The light that the surface gives off."}};
    return {
        {kGroup, "Group", "Holds other items together.", {"Structure"}},
        {"transform", "Transform", "A place for other items to move with.", {"Structure"}},
        {"mesh", "Mesh", "A surface made of faces.", {"Geometry"}, ofMesh},
        {kCamera, "Camera", "A view of the scene.", {"Camera"}, ofCamera},
        light(kLight, "Light", "A light of no particular kind, such as an ambient light.",
              Light::Other),
        light("directionalLight", "Directional Light", "Shines from far away in one direction.",
              Light::Directional),
        light("pointLight", "Point Light", "Shines in all directions.", Light::Point),
        light("spotLight", "Spot Light", "Shines in a cone.", Light::Spot),
        light("areaLight", "Area Light", "Shines from a surface.", Light::Area),
        {kMaterial,
         "Material",
         "How the surfaces that it is bound to look.",
         {"Material"},
         ofMaterial,
         {{"surface", "Surface", Color3f(), "The colour of the lit surface."}}},
    };
}

} // namespace

const std::vector<NodeType>& nodeTypes()
{
    static const auto types = makeNodeTypes();
    return types;
}

const NodeType* findNodeType(const std::string& type)
{
    const auto& types = nodeTypes();
    const auto found = std::find_if(types.begin(), types.end(),
                                    [&](const auto& known) { return known.type == type; });
    return found == types.end() ? nullptr : &*found;
}

std::optional<Light::Type> lightKind(const std::string& type)
{
    const auto* known = findNodeType(type);
    return known ? known->light : std::nullopt;
}

} // namespace Kiv_v4::memory
