#include "kiv/camera.h"
#include "kiv/light.h"

#include "sections.h"

namespace app {

using namespace Kiv_v4;

namespace {

const char* nameOf(Camera::Projection projection)
{
    return projection == Camera::Orthographic ? "orthographic" : "perspective";
}

const char* nameOf(Light::Type type)
{
    switch (type) {
    case Light::Directional:
        return "directional";
    case Light::Point:
        return "point";
    case Light::Spot:
        return "spot";
    case Light::Area:
        return "area";
    case Light::Other:
        break;
    }
    return "other";
}

/// What only the lights of a kind have.
void addOfKind(std::vector<Fact>& facts, Light& light)
{
    if (const auto directional = light.directionalInterface()) {
        facts.push_back({"angle", "angle", json(directional->angle()), kDegrees});
    }
    if (const auto sphere = light.sphereInterface()) {
        const auto props = sphere->sphereProps();
        facts.push_back({"radius", "radius", json(props.radius), kSceneUnits});
        facts.push_back({"asPoint", "shines as a point", props.asPoint});
    }
    if (const auto cone = light.coneInterface()) {
        const auto props = cone->coneProps();
        facts.push_back({"coneAngle", "cone angle", json(props.coneAngle), kDegrees});
        facts.push_back({"penumbraAngle", "penumbra angle", json(props.penumbraAngle), kDegrees});
        facts.push_back({"dropoff", "dropoff", json(props.dropoff)});
    }
    if (const auto area = light.areaInterface()) {
        facts.push_back({"normalize", "normalized", area->normalize()});
    }
}

} // namespace

Section camera(const SceneItem::Ptr& item)
{
    const auto camera = Camera::camera(item);
    if (!camera) {
        return {};
    }
    const auto fact = [](const char* key, const char* label, float value, const char* unit) {
        return Fact{key, label, json(value), unit};
    };
    return {
        "camera",
        "camera",
        {
            {"projection", "projection", nameOf(camera->projection())},
            fact("focalLength", "focal length", camera->focalLength(), kMillimetres),
            fact("horizontalAperture", "horizontal aperture", camera->horizontalAperture(),
                 kMillimetres),
            fact("verticalAperture", "vertical aperture", camera->verticalAperture(), kMillimetres),
            fact("horizontalApertureOffset", "horizontal aperture offset",
                 camera->horizontalApertureOffset(), kMillimetres),
            fact("verticalApertureOffset", "vertical aperture offset",
                 camera->verticalApertureOffset(), kMillimetres),
            fact("fStop", "f-stop", camera->fStop(), ""),
            fact("focusDistance", "focus distance", camera->focusDistance(), kSceneUnits),
            fact("nearClipPlane", "near clip plane", camera->nearClipPlane(), kSceneUnits),
            fact("farClipPlane", "far clip plane", camera->farClipPlane(), kSceneUnits),
        }};
}

Section light(const SceneItem::Ptr& item)
{
    Section section{"light", "light"};
    const auto light = Light::light(item);
    if (!light) {
        return section;
    }
    section.facts = {
        {"type", "type", nameOf(light->type())},
        {"intensity", "intensity", json(light->intensity())},
        {"color", "color", json(light->color())},
        {"diffuse", "diffuse", json(light->diffuse())},
        {"specular", "specular", json(light->specular())},
        {"shadowEnable", "casts shadows", light->shadowEnable()},
        {"shadowColor", "shadow color", json(light->shadowColor())},
    };
    addOfKind(section.facts, *light);
    return section;
}

} // namespace app
