#include <type_traits>
#include <utility>

#include "kiv/host/matrix.h"

#include "itemInterfaces.h"

namespace Kiv_v4::host {

namespace {

using Vector2f = TypedVectorN<float, 2>;

template <class T>
constexpr const char* typeName()
{
    return std::is_same_v<T, bool>       ? Attribute::kBool
           : std::is_same_v<T, float>    ? Attribute::kFloat
           : std::is_same_v<T, Color3f>  ? Attribute::kColorFloat3
           : std::is_same_v<T, Vector2f> ? Attribute::kFloat2
           : std::is_same_v<T, Vector3d> ? Attribute::kDouble3
           : std::is_same_v<T, Matrix4d> ? Attribute::kMatrix4d
                                         : Attribute::kEnumString;
}

/// The command of an interface for a value that it may take element by element.
template <class Interface, class T, class... Arguments>
UndoableCommand::Ptr commandOf(Interface& interface,
                               UndoableCommand::Ptr (Interface::*setCmd)(Arguments...),
                               const T& value)
{
    if constexpr (std::is_same_v<T, Color3f>) {
        return (interface.*setCmd)(value.r(), value.g(), value.b());
    } else if constexpr (std::is_same_v<T, Vector3d>) {
        return (interface.*setCmd)(value.vector[0], value.vector[1], value.vector[2]);
    } else {
        return (interface.*setCmd)(value);
    }
}

/// A property that an interface reads and sets with functions of its own.
template <class Interface, class T, class... Arguments>
Row row(Property property, T (Interface::*get)() const,
        UndoableCommand::Ptr (Interface::*setCmd)(Arguments...))
{
    property.type = typeName<T>();
    return {std::move(property),
            [get](Interfaces& item) -> std::optional<PropertyValue> {
                const auto interface = item.get<Interface>();
                return interface ? std::optional<PropertyValue>(((*interface).*get)())
                                 : std::nullopt;
            },
            [](Interfaces& item) { return item.get<Interface>() != nullptr; },
            [setCmd](Interfaces& item, const PropertyValue& value) {
                return commandOf(*item.get<Interface>(), setCmd, std::get<T>(value));
            }};
}

/// A property that is one of several that are read and set together.
template <class Interface, class Props, class T, class... Arguments>
Row row(Property property, Props (Interface::*get)() const, T Props::*part,
        UndoableCommand::Ptr (*setCmd)(Interface&, const Props&))
{
    property.type = typeName<T>();
    return {std::move(property),
            [get, part](Interfaces& item) -> std::optional<PropertyValue> {
                const auto interface = item.get<Interface>();
                return interface ? std::optional<PropertyValue>(((*interface).*get)().*part)
                                 : std::nullopt;
            },
            [](Interfaces& item) { return item.get<Interface>() != nullptr; },
            [=](Interfaces& item, const PropertyValue& value) {
                const auto interface = item.get<Interface>();
                auto props = ((*interface).*get)();
                props.*part = std::get<T>(value);
                return setCmd(*interface, props);
            }};
}

UndoableCommand::Ptr setSphereCmd(Light::SphereInterface& sphere, const Light::SphereProps& props)
{
    return sphere.spherePropsCmd(props.radius, props.asPoint);
}

UndoableCommand::Ptr setConeCmd(Light::ConeInterface& cone, const Light::ConeProps& props)
{
    return cone.conePropsCmd(props.coneAngle, props.penumbraAngle, props.dropoff);
}

std::vector<Row> transformRows()
{
    using T = Transform3d;
    const auto of = [](const char* name, const char* label, const char* unit = "") {
        return Property{kTransform, name, label, "", unit, {}, true, "object in space"};
    };
    const auto matrix = [](Interfaces& item) -> std::optional<PropertyValue> {
        const auto place = item.get<Transform3dRead>();
        return place ? std::optional<PropertyValue>(place->matrix()) : std::nullopt;
    };
    const auto canSet = [](Interfaces& item) { return item.get<T>() != nullptr; };
    const auto setMatrixCmd = [](Interfaces& item, const PropertyValue& value) {
        return item.get<T>()->setMatrixCmd(std::get<Matrix4d>(value));
    };
    const auto world = [](Interfaces& item) -> std::optional<PropertyValue> {
        const auto found = worldMatrix(item.item);
        return found ? std::optional<PropertyValue>(*found) : std::nullopt;
    };
    auto own = of("matrix", "matrix");
    auto inWorld = of("worldMatrix", "world matrix");
    own.type = inWorld.type = Attribute::kMatrix4d;
    inWorld.isSettable = false;
    return {
        {own, matrix, canSet, setMatrixCmd},
        {inWorld, world},
        row(of("translation", "translation", kSceneUnits), &T::translation, &T::translateCmd),
        row(of("rotation", "rotation", kDegrees), &T::rotation, &T::rotateCmd),
        row(of("scale", "scale"), &T::scale, &T::scaleCmd),
        row(of("shear", "shear"), &T::shear, &T::shearCmd),
        row(of("rotatePivot", "rotate pivot", kSceneUnits), &T::rotatePivot, &T::rotatePivotCmd),
        row(of("scalePivot", "scale pivot", kSceneUnits), &T::scalePivot, &T::scalePivotCmd),
        row(of("rotatePivotTranslation", "rotate pivot translation", kSceneUnits),
            &T::rotatePivotTranslation, &T::translateRotatePivotCmd),
        row(of("scalePivotTranslation", "scale pivot translation", kSceneUnits),
            &T::scalePivotTranslation, &T::translateScalePivotCmd),
        row(of("rotateAxis", "rotate axis", kDegrees), &T::rotateAxis, &T::rotateAxisCmd),
    };
}

constexpr const char* kPerspective = "perspective";
constexpr const char* kOrthographic = "orthographic";

Row projectionRow()
{
    return {{kCamera,
             "projection",
             "projection",
             Attribute::kEnumString,
             "",
             {kPerspective, kOrthographic},
             true,
             "camera"},
            [](Interfaces& item) -> std::optional<PropertyValue> {
                const auto camera = item.get<Camera>();
                if (!camera) {
                    return std::nullopt;
                }
                return EnumStringValue{camera->projection() == Camera::Orthographic ? kOrthographic
                                                                                    : kPerspective};
            },
            [](Interfaces& item) { return item.get<Camera>() != nullptr; },
            [](Interfaces& item, const PropertyValue& value) {
                return item.get<Camera>()->projectionCmd(
                    std::get<EnumStringValue>(value).text == kOrthographic ? Camera::Orthographic
                                                                           : Camera::Perspective);
            }};
}

std::vector<Row> cameraRows()
{
    using C = Camera;
    const auto of = [](const char* name, const char* label, const char* unit = "") {
        return Property{kCamera, name, label, "", unit, {}, true, "camera"};
    };
    return {
        projectionRow(),
        row(of("focalLength", "focal length", kMillimetres), &C::focalLength, &C::focalLengthCmd),
        row(of("horizontalAperture", "horizontal aperture", kMillimetres), &C::horizontalAperture,
            &C::horizontalApertureCmd),
        row(of("verticalAperture", "vertical aperture", kMillimetres), &C::verticalAperture,
            &C::verticalApertureCmd),
        row(of("horizontalApertureOffset", "horizontal aperture offset", kMillimetres),
            &C::horizontalApertureOffset, &C::horizontalApertureOffsetCmd),
        row(of("verticalApertureOffset", "vertical aperture offset", kMillimetres),
            &C::verticalApertureOffset, &C::verticalApertureOffsetCmd),
        row(of("fStop", "f-stop"), &C::fStop, &C::fStopCmd),
        row(of("focusDistance", "focus distance", kSceneUnits), &C::focusDistance,
            &C::focusDistanceCmd),
        row(of("nearClipPlane", "near clip plane", kSceneUnits), &C::nearClipPlane,
            &C::nearClipPlaneCmd),
        row(of("farClipPlane", "far clip plane", kSceneUnits), &C::farClipPlane,
            &C::farClipPlaneCmd),
    };
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

Row lightTypeRow()
{
    return {{kLight,
             "type",
             "type",
             Attribute::kEnumString,
             "",
             {"other", "directional", "point", "spot", "area"},
             false,
             "light"},
            [](Interfaces& item) -> std::optional<PropertyValue> {
                const auto light = item.get<Light>();
                return light ? std::optional<PropertyValue>(EnumStringValue{nameOf(light->type())})
                             : std::nullopt;
            }};
}

std::vector<Row> lightRows()
{
    using L = Light;
    const auto of = [](const char* name, const char* label, const char* unit = "",
                       const char* owner = "light") {
        return Property{kLight, name, label, "", unit, {}, true, owner};
    };
    const auto* sphere = "point or spot light";
    const auto* cone = "spot light";
    using Directional = L::DirectionalInterface;
    return {
        lightTypeRow(),
        row(of("intensity", "intensity"), &L::intensity, &L::intensityCmd),
        row(of("color", "color"), &L::color, &L::colorCmd),
        row(of("diffuse", "diffuse"), &L::diffuse, &L::diffuseCmd),
        row(of("specular", "specular"), &L::specular, &L::specularCmd),
        row(of("shadowEnable", "casts shadows"), &L::shadowEnable, &L::shadowEnableCmd),
        row(of("shadowColor", "shadow color"), &L::shadowColor, &L::shadowColorCmd),
        row(of("angle", "angle", kDegrees, "directional light"), &Directional::angle,
            &Directional::angleCmd),
        row(of("radius", "radius", kSceneUnits, sphere), &L::SphereInterface::sphereProps,
            &L::SphereProps::radius, setSphereCmd),
        row(of("asPoint", "shines as a point", "", sphere), &L::SphereInterface::sphereProps,
            &L::SphereProps::asPoint, setSphereCmd),
        row(of("coneAngle", "cone angle", kDegrees, cone), &L::ConeInterface::coneProps,
            &L::ConeProps::coneAngle, setConeCmd),
        row(of("penumbraAngle", "penumbra angle", kDegrees, cone), &L::ConeInterface::coneProps,
            &L::ConeProps::penumbraAngle, setConeCmd),
        row(of("dropoff", "dropoff", "", cone), &L::ConeInterface::coneProps,
            &L::ConeProps::dropoff, setConeCmd),
        row(of("normalize", "normalized", "", "area light"), &L::AreaInterface::normalize,
            &L::AreaInterface::normalizeCmd),
    };
}

std::vector<Row> otherRows()
{
    using Node = UINodeGraphNode;
    using SizedNode = UINodeGraphNode_v4_1;
    auto position =
        row({kGraphNode, "position", "graph position", "", "", {}, true, "node of a graph"},
            &Node::position, &Node::setPositionCmd);
    auto size = row({kGraphNode, "size", "graph size", "", "", {}, true, "node of a graph"},
                    &SizedNode::size, &SizedNode::setSizeCmd);
    position.read = [](Interfaces& item) -> std::optional<PropertyValue> {
        const auto node = item.get<Node>();
        return node && node->hasPosition() ? std::optional<PropertyValue>(node->position())
                                           : std::nullopt;
    };
    size.read = [](Interfaces& item) -> std::optional<PropertyValue> {
        const auto node = item.get<SizedNode>();
        return node && node->hasSize() ? std::optional<PropertyValue>(node->size()) : std::nullopt;
    };
    return {row({kObject, "visible", "visible", "", "", {}, true, "object in space"},
                &Object3d::visibility, &Object3d::setVisibilityCmd),
            std::move(position), std::move(size)};
}

} // namespace

std::vector<Row> makeRows()
{
    std::vector<Row> rows;
    for (auto&& part : {transformRows(), cameraRows(), lightRows(), otherRows()}) {
        rows.insert(rows.end(), part.begin(), part.end());
    }
    return rows;
}

} // namespace Kiv_v4::host
