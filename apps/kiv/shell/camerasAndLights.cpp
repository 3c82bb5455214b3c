#include <stdexcept>
#include <string>
#include <string_view>

#include "kiv/camera.h"
#include "kiv/light.h"

#include "command.h"
#include "editing.h"
#include "numbers.h"
#include "sections.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

/// A property by the name that `show --json` has for it, and the command that sets it to the value
/// that the words are. Null means that this kind of object does not have it, or a refusal.
template <class Interface>
struct Property
{
    std::string_view name;
    UndoableCommand::Ptr (*cmd)(Interface& object, const Words& words);
};

using Lens = UndoableCommand::Ptr (Camera::*)(float);

template <Lens set>
UndoableCommand::Ptr lens(Camera& camera, const Words& words)
{
    return (camera.*set)(valueOf<float>(words));
}

UndoableCommand::Ptr projection(Camera& camera, const Words& words)
{
    const auto name = valueOf<std::string>(words);
    if (name != "perspective" && name != "orthographic") {
        throw std::runtime_error("'" + name + "' is neither perspective nor orthographic");
    }
    return camera.projectionCmd(name == "perspective" ? Camera::Perspective : Camera::Orthographic);
}

constexpr Property<Camera> kCameraProperties[] = {
    {"projection", projection},
    {"focalLength", lens<&Camera::focalLengthCmd>},
    {"horizontalAperture", lens<&Camera::horizontalApertureCmd>},
    {"verticalAperture", lens<&Camera::verticalApertureCmd>},
    {"horizontalApertureOffset", lens<&Camera::horizontalApertureOffsetCmd>},
    {"verticalApertureOffset", lens<&Camera::verticalApertureOffsetCmd>},
    {"fStop", lens<&Camera::fStopCmd>},
    {"focusDistance", lens<&Camera::focusDistanceCmd>},
    {"nearClipPlane", lens<&Camera::nearClipPlaneCmd>},
    {"farClipPlane", lens<&Camera::farClipPlaneCmd>},
};

using Factor = UndoableCommand::Ptr (Light::*)(float);
using Color = UndoableCommand::Ptr (Light::*)(float, float, float);

template <Factor set>
UndoableCommand::Ptr factor(Light& light, const Words& words)
{
    return (light.*set)(valueOf<float>(words));
}

template <Color set>
UndoableCommand::Ptr color(Light& light, const Words& words)
{
    const auto value = valueOf<Color3f>(words);
    return (light.*set)(value.r(), value.g(), value.b());
}

UndoableCommand::Ptr shadowEnable(Light& light, const Words& words)
{
    return light.shadowEnableCmd(valueOf<bool>(words));
}

UndoableCommand::Ptr angle(Light& light, const Words& words)
{
    const auto directional = light.directionalInterface();
    return directional ? directional->angleCmd(valueOf<float>(words)) : nullptr;
}

UndoableCommand::Ptr radius(Light& light, const Words& words)
{
    const auto sphere = light.sphereInterface();
    return sphere ? sphere->spherePropsCmd(valueOf<float>(words), sphere->sphereProps().asPoint)
                  : nullptr;
}

UndoableCommand::Ptr asPoint(Light& light, const Words& words)
{
    const auto sphere = light.sphereInterface();
    return sphere ? sphere->spherePropsCmd(sphere->sphereProps().radius, valueOf<bool>(words))
                  : nullptr;
}

template <float Light::ConeProps::*field>
UndoableCommand::Ptr cone(Light& light, const Words& words)
{
    const auto cone = light.coneInterface();
    if (!cone) {
        return nullptr;
    }
    auto props = cone->coneProps();
    props.*field = valueOf<float>(words);
    return cone->conePropsCmd(props.coneAngle, props.penumbraAngle, props.dropoff);
}

UndoableCommand::Ptr normalize(Light& light, const Words& words)
{
    const auto area = light.areaInterface();
    return area ? area->normalizeCmd(valueOf<bool>(words)) : nullptr;
}

constexpr Property<Light> kLightProperties[] = {
    {"intensity", factor<&Light::intensityCmd>},
    {"color", color<&Light::colorCmd>},
    {"diffuse", factor<&Light::diffuseCmd>},
    {"specular", factor<&Light::specularCmd>},
    {"shadowEnable", shadowEnable},
    {"shadowColor", color<&Light::shadowColorCmd>},
    {"angle", angle},
    {"radius", radius},
    {"asPoint", asPoint},
    {"coneAngle", cone<&Light::ConeProps::coneAngle>},
    {"penumbraAngle", cone<&Light::ConeProps::penumbraAngle>},
    {"dropoff", cone<&Light::ConeProps::dropoff>},
    {"normalize", normalize},
};

template <class Properties>
const auto& propertyNamed(const Properties& properties, const std::string& name)
{
    std::string names;
    for (const auto& property : properties) {
        if (property.name == name) {
            return property;
        }
        names += (names.empty() ? "" : ", ") + std::string(property.name);
    }
    throw std::runtime_error("'" + name + "' is none of " + names);
}

/// Sets the property that the arguments name or, without one, prints all.
template <class Interface, class Properties>
void editOrPrint(Session& session, const Arguments& arguments, const SceneItem::Ptr& item,
                 const std::shared_ptr<Interface>& object, const Properties& properties,
                 Section (*section)(const SceneItem::Ptr&))
{
    if (arguments.size() == 1) {
        auto facts = section(item);
        facts.title.clear();
        return writeText({facts}, session.output());
    }
    const auto& property = propertyNamed(properties, arguments[1]);
    edit(arguments[1] + " " + item->nodeName(), item, property.cmd(*object, arguments.from(2)));
}

void editCamera(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto object = required(Camera::camera(item), item, "is no camera");
    editOrPrint(session, arguments, item, object, kCameraProperties, camera);
}

void editLight(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto object = required(Light::light(item), item, "is no light");
    editOrPrint(session, arguments, item, object, kLightProperties, light);
}

constexpr Command kCommands[] = {
    {"camera", "ITEM [PROPERTY] [VALUE...]", "Print a camera, or set one of its properties.",
     editCamera},
    {"light", "ITEM [PROPERTY] [VALUE...]", "Print a light, or set one of its properties.",
     editLight},
};

} // namespace

CommandKind camerasAndLights()
{
    return {"Cameras and lights", kCommands};
}

} // namespace app::shell
