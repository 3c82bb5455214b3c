#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "kiv/camera.h"
#include "kiv/light.h"

#include "command.h"
#include "editing.h"
#include "numbers.h"
#include "properties.h"
#include "sections.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

/// The command that sets a property; nothing when there is none of that name.
using SetCmd = std::optional<UndoableCommand::Ptr>;

const auto* named(const auto& properties, const std::string& name)
{
    const auto found = std::ranges::find_if(
        properties, [&name](const auto& property) { return name == property.key; });
    return found == std::end(properties) ? nullptr : &*found;
}

UndoableCommand::Ptr projectionCmd(Camera& camera, const std::string& name)
{
    if (name != "perspective" && name != "orthographic") {
        throw std::runtime_error("'" + name + "' is neither perspective nor orthographic");
    }
    return camera.projectionCmd(name == "perspective" ? Camera::Perspective : Camera::Orthographic);
}

SetCmd setCmd(Camera& camera, const std::string& name, const Words& words)
{
    if (name == "projection") {
        return projectionCmd(camera, valueOf<std::string>(words));
    }
    const auto* field = named(kCameraFields, name);
    return field ? SetCmd((camera.*field->setCmd)(valueOf<float>(words))) : std::nullopt;
}

/// A property of a kind of light. The command is null for a light of another kind.
struct KindProperty
{
    std::string_view key;
    UndoableCommand::Ptr (*setCmd)(Light& light, const Words& words);
};

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

constexpr KindProperty kKindProperties[] = {
    {"angle", angle},
    {"radius", radius},
    {"asPoint", asPoint},
    {"coneAngle", cone<&Light::ConeProps::coneAngle>},
    {"penumbraAngle", cone<&Light::ConeProps::penumbraAngle>},
    {"dropoff", cone<&Light::ConeProps::dropoff>},
    {"normalize", normalize},
};

SetCmd setCmd(Light& light, const std::string& name, const Words& words)
{
    if (name == "shadowEnable") {
        return light.shadowEnableCmd(valueOf<bool>(words));
    }
    if (const auto* field = named(kLightFields, name)) {
        return (light.*field->setCmd)(valueOf<float>(words));
    }
    if (const auto* field = named(kLightColorFields, name)) {
        const auto color = valueOf<Color3f>(words);
        return (light.*field->setCmd)(color.r(), color.g(), color.b());
    }
    const auto* property = named(kKindProperties, name);
    return property ? SetCmd(property->setCmd(light, words)) : std::nullopt;
}

/// Sets the property that the arguments name or, without one, prints all.
template <class Interface>
void editOrPrint(Session& session, const Arguments& arguments, const SceneItem::Ptr& item,
                 Interface& object, Section section)
{
    if (arguments.size() == 1) {
        section.title.clear();
        return writeText({section}, session.output());
    }
    const auto command = setCmd(object, arguments[1], arguments.from(2));
    if (!command) {
        fail(item, "has no property '" + arguments[1] + "'");
    }
    edit(arguments[1] + " " + item->nodeName(), item, *command);
}

void editCamera(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto object = required(Camera::camera(item), item, "is no camera");
    editOrPrint(session, arguments, item, *object, camera(item));
}

void editLight(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto object = required(Light::light(item), item, "is no light");
    editOrPrint(session, arguments, item, *object, light(item));
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
