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
#include "terminal.h"

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

/// A property of a kind of light, which setting fails on a light of another kind.
struct KindProperty
{
    std::string_view key;
    UndoableCommand::Ptr (*setCmd)(Light& light, const Words& words);
};

UndoableCommand::Ptr angle(Light& light, const Words& words)
{
    const auto directional =
        required(light.directionalInterface(), light.sceneItem(), "is no directional light");
    return directional->angleCmd(valueOf<float>(words));
}

Light::SphereInterface::Ptr sphereOf(Light& light)
{
    return required(light.sphereInterface(), light.sceneItem(), "is no point or spot light");
}

UndoableCommand::Ptr radius(Light& light, const Words& words)
{
    const auto sphere = sphereOf(light);
    return sphere->spherePropsCmd(valueOf<float>(words), sphere->sphereProps().asPoint);
}

UndoableCommand::Ptr asPoint(Light& light, const Words& words)
{
    const auto sphere = sphereOf(light);
    return sphere->spherePropsCmd(sphere->sphereProps().radius, valueOf<bool>(words));
}

template <float Light::ConeProps::*field>
UndoableCommand::Ptr cone(Light& light, const Words& words)
{
    const auto cone = required(light.coneInterface(), light.sceneItem(), "is no spot light");
    auto props = cone->coneProps();
    props.*field = valueOf<float>(words);
    return cone->conePropsCmd(props.coneAngle, props.penumbraAngle, props.dropoff);
}

UndoableCommand::Ptr normalize(Light& light, const Words& words)
{
    const auto area = required(light.areaInterface(), light.sceneItem(), "is no area light");
    return area->normalizeCmd(valueOf<bool>(words));
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

/// Prints all properties under the names that set them.
void print(const Session& session, Section properties)
{
    properties.title.clear();
    for (auto& property : properties.facts) {
        property.label = property.key;
    }
    writeText({properties}, session.output());
}

[[noreturn]] void failWithoutProperty(const SceneItem::Ptr& item, const std::string& name,
                                      const Section& properties)
{
    std::string keys;
    for (const auto& property : properties.facts) {
        keys += (keys.empty() ? "" : ", ") + property.key;
    }
    fail(item, "has no property '" + name + "', only " + keys);
}

/// Sets the property that the arguments name or prints it or, without one, all.
template <class Interface>
void editOrPrint(Session& session, const Arguments& arguments, const SceneItem::Ptr& item,
                 Interface& object, const Section& properties)
{
    if (arguments.size() == 1) {
        return print(session, properties);
    }
    const auto& name = arguments[1];
    const auto* property = named(properties.facts, name);
    if (arguments.size() == 2 && property) {
        return session.output().line(printable(app::textOf(property->value)));
    }
    const auto command = setCmd(object, name, arguments.from(2));
    if (!command && property) {
        fail(item, "property '" + name + "' cannot be set");
    }
    if (!command) {
        failWithoutProperty(item, name, properties);
    }
    edit(name + " " + item->nodeName(), item, *command);
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
    {"camera", "ITEM [PROPERTY] [VALUE...]",
     "Print a camera or one of its properties, or set that.", editCamera},
    {"light", "ITEM [PROPERTY] [VALUE...]", "Print a light or one of its properties, or set that.",
     editLight},
};

} // namespace

CommandKind camerasAndLights()
{
    return {"Cameras and lights", kCommands};
}

} // namespace app::shell
