#include "observers.h"
#include "overrides.h"

namespace bound {

namespace {

using kiv::SceneItem;
using kiv::Vector3d;

#define KIV_MAKER(Handler, Interface, name)                                                        \
    class Py##Handler : public Derivable<kiv::Handler>                                             \
    {                                                                                              \
    public:                                                                                        \
        using Derivable::Derivable;                                                                \
        KIV_PURE_METHOD(kiv::Interface::Ptr, name, (const SceneItem::Ptr& item), (item))           \
    }

KIV_MAKER(LightHandler, Light, light);
KIV_MAKER(Object3dHandler, Object3d, object3d);
KIV_MAKER(MaterialHandler, Material, material);

class PyTransform3dHandler : public Derivable<kiv::Transform3dHandler>
{
public:
    using Derivable::Derivable;
    KIV_CONST_METHOD(kiv::Transform3dRead::Ptr, transform3dRead, (const SceneItem::Ptr& item),
                     (item))
    KIV_PURE_CONST_METHOD(kiv::Transform3d::Ptr, transform3d, (const SceneItem::Ptr& item), (item))
    KIV_CONST_METHOD(kiv::Transform3d::Ptr, editTransform3d,
                     (const SceneItem::Ptr& item, const kiv::EditTransform3dHint& hint),
                     (item, hint))
};

class PyCameraHandler : public Derivable<kiv::CameraHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::Camera::Ptr, camera, (const SceneItem::Ptr& item), (item))
    KIV_PURE_METHOD(kiv::Selection, findCameras, (const kiv::Path& path), (path))
};

class PyDirectional : public Derivable<kiv::Light::DirectionalInterface>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::UndoableCommand::Ptr, angleCmd, (float value), (value))
    KIV_PURE_NOUN(float, angle)
};

class PyArea : public Derivable<kiv::Light::AreaInterface>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::UndoableCommand::Ptr, normalizeCmd, (bool value), (value))
    KIV_PURE_NOUN(bool, normalize)
};

class PySphere : public Derivable<kiv::Light::SphereInterface>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::UndoableCommand::Ptr, spherePropsCmd, (float radius, bool asPoint),
                    (radius, asPoint))
    KIV_PURE_NOUN(kiv::Light::SphereProps, sphereProps)
};

class PyCone : public Derivable<kiv::Light::ConeInterface>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::UndoableCommand::Ptr, conePropsCmd,
                    (float coneAngle, float penumbraAngle, float dropoff),
                    (coneAngle, penumbraAngle, dropoff))
    KIV_PURE_NOUN(kiv::Light::ConeProps, coneProps)
};

class PyMaterial : public Derivable<kiv::Material>
{
public:
    using Derivable::Derivable;
    KIV_PURE_NOUN(std::vector<SceneItem::Ptr>, materials)
};

void bindTransformRead(nb::module_& module)
{
    using Read = kiv::Transform3dRead;
    Class<Read> type(module, "Transform3dRead");
    type.def_static("of", &Read::transform3dRead, "item"_a,
                    contract("Transform3dRead::transform3dRead"));
    type.property("path", [](const Read& self) { return self.path(); });
    type.property("sceneItem", &Read::sceneItem);
    type.property("matrix", &Read::matrix);
    type.property("segmentInclusiveMatrix", &Read::segmentInclusiveMatrix);
    type.property("segmentExclusiveMatrix", &Read::segmentExclusiveMatrix);
    type.property("inclusiveMatrix", &Read::inclusiveMatrix);
    type.property("exclusiveMatrix", &Read::exclusiveMatrix);
    using Hint = kiv::EditTransform3dHint;
    Class<Hint> hint(module, "EditTransform3dHint");
    enumeration<Hint::Type>(hint, "Type", "EditTransform3dHint::Type",
                            {{"NoHint", Hint::NoHint},
                             {"Translate", Hint::Translate},
                             {"Rotate", Hint::Rotate},
                             {"Scale", Hint::Scale},
                             {"RotatePivot", Hint::RotatePivot},
                             {"ScalePivot", Hint::ScalePivot},
                             {"Matrix", Hint::Matrix}});
    hint.def(nb::init<Hint::Type>(), "type"_a);
    hint.property("type", &Hint::type);
    nb::implicitly_convertible<Hint::Type, Hint>();
}

void bindTransform(nb::module_& module)
{
    using kiv::Transform3d;
    Class<Transform3d, kiv::Transform3dRead> type(module, "Transform3d");
    type.def_static("of", &Transform3d::transform3d, "item"_a,
                    contract("Transform3d::transform3d"));
    type.function("editTransform3d", &Transform3d::editTransform3d, "item"_a, "hint"_a);
    // A property for each factor, and its command; `set` names the C++ function of both.
    const auto factor =
        [&](const char* name, const char* set, Vector3d (Transform3d::*get)() const,
            void (Transform3d::*change)(double, double, double),
            kiv::UndoableCommand::Ptr (Transform3d::*command)(double, double, double)) {
            type.settable(name, get, [change](Transform3d& self, const Vector3d& value) {
                (self.*change)(value.vector[0], value.vector[1], value.vector[2]);
            });
            type.method((std::string(set) + "Cmd").c_str(), command, "x"_a, "y"_a, "z"_a);
            if (std::string_view(name) != set) {
                type.method(set, change, "x"_a, "y"_a, "z"_a);
            }
        };
    using Get = Vector3d (Transform3d::*)() const;
    using Set = void (Transform3d::*)(double, double, double);
    factor("translation", "translate", &Transform3d::translation, &Transform3d::translate,
           &Transform3d::translateCmd);
    factor("rotation", "rotate", &Transform3d::rotation, &Transform3d::rotate,
           &Transform3d::rotateCmd);
    factor("scale", "scale", static_cast<Get>(&Transform3d::scale),
           static_cast<Set>(&Transform3d::scale), &Transform3d::scaleCmd);
    factor("rotatePivot", "rotatePivot", static_cast<Get>(&Transform3d::rotatePivot),
           static_cast<Set>(&Transform3d::rotatePivot), &Transform3d::rotatePivotCmd);
    factor("scalePivot", "scalePivot", static_cast<Get>(&Transform3d::scalePivot),
           static_cast<Set>(&Transform3d::scalePivot), &Transform3d::scalePivotCmd);
    factor("rotatePivotTranslation", "translateRotatePivot", &Transform3d::rotatePivotTranslation,
           &Transform3d::translateRotatePivot, &Transform3d::translateRotatePivotCmd);
    factor("scalePivotTranslation", "translateScalePivot", &Transform3d::scalePivotTranslation,
           &Transform3d::translateScalePivot, &Transform3d::translateScalePivotCmd);
    factor("rotateAxis", "rotateAxis", static_cast<Get>(&Transform3d::rotateAxis),
           static_cast<Set>(&Transform3d::rotateAxis), &Transform3d::rotateAxisCmd);
    factor("shear", "shear", static_cast<Get>(&Transform3d::shear),
           static_cast<Set>(&Transform3d::shear), &Transform3d::shearCmd);
    type.method("setMatrixCmd", &Transform3d::setMatrixCmd, "matrix"_a);
    type.method("setMatrix", &Transform3d::setMatrix, "matrix"_a);
    bindItemObservers<Transform3d>(type);
    type.function("notify", &Transform3d::notify, "path"_a);

    using Handler = kiv::Transform3dHandler;
    Class<Handler, PyTransform3dHandler> handler(module, "Transform3dHandler");
    handler.def(nb::init<>());
    handler.method("transform3dRead", &Handler::transform3dRead, "item"_a);
    handler.method("transform3d", &Handler::transform3d, "item"_a);
    handler.method("editTransform3d", &Handler::editTransform3d, "item"_a, "hint"_a);
}

/// A value of an interface that has a getter, a convenience and a command of one name.
#define KIV_VALUE(type, Interface, Value, name)                                                    \
    type.settable(#name, static_cast<Value (Interface::*)() const>(&Interface::name),              \
                  static_cast<void (Interface::*)(Value)>(&Interface::name))                       \
        .method(#name "Cmd", &Interface::name##Cmd, "value"_a)

void bindCamera(nb::module_& module)
{
    using kiv::Camera;
    Class<Camera> type(module, "Camera");
    enumeration<Camera::Projection>(
        type, "Projection", "Camera::Projection",
        {{"Perspective", Camera::Perspective}, {"Orthographic", Camera::Orthographic}});
    type.def_static("of", &Camera::camera, "item"_a, contract("Camera::camera"));
    type.property("path", [](const Camera& self) { return self.path(); });
    type.property("sceneItem", &Camera::sceneItem);
    KIV_VALUE(type, Camera, float, horizontalAperture);
    KIV_VALUE(type, Camera, float, verticalAperture);
    KIV_VALUE(type, Camera, float, horizontalApertureOffset);
    KIV_VALUE(type, Camera, float, verticalApertureOffset);
    KIV_VALUE(type, Camera, float, fStop);
    KIV_VALUE(type, Camera, float, focalLength);
    KIV_VALUE(type, Camera, float, focusDistance);
    KIV_VALUE(type, Camera, float, nearClipPlane);
    KIV_VALUE(type, Camera, float, farClipPlane);
    KIV_VALUE(type, Camera, Camera::Projection, projection);
    bindItemObservers<Camera>(type);
    type.function("notify", &Camera::notify, "path"_a);

    using Handler = kiv::CameraHandler;
    Class<Handler, PyCameraHandler> handler(module, "CameraHandler");
    handler.def(nb::init<>());
    handler.method("camera", &Handler::camera, "item"_a);
    handler.method("findCameras", &Handler::findCameras, "path"_a);
    handler.function("find", &Handler::find, "path"_a);
    handler.function("findAll", &Handler::findAll, "path"_a);
}

void bindLightParts(Class<kiv::Light>& type)
{
    using kiv::Light;
    using Sphere = Light::SphereProps;
    Class<Sphere> sphere(type, "SphereProps", "Light::SphereProps");
    sphere.def(
        "__init__",
        [](Sphere* self, float radius, bool asPoint) {
            new (self) Sphere{radius, asPoint};
        },
        "radius"_a = 0.0f, "as_point"_a = false);
    sphere.field("radius", &Sphere::radius).field("asPoint", &Sphere::asPoint);
    sphere.def(
        "__eq__", [](const Sphere& a, const Sphere& b) { return a == b; }, nb::is_operator());
    using Cone = Light::ConeProps;
    Class<Cone> cone(type, "ConeProps", "Light::ConeProps");
    cone.def(
        "__init__",
        [](Cone* self, float coneAngle, float penumbraAngle, float dropoff) {
            new (self) Cone{coneAngle, penumbraAngle, dropoff};
        },
        "cone_angle"_a = 0.0f, "penumbra_angle"_a = 0.0f, "dropoff"_a = 0.0f);
    cone.field("coneAngle", &Cone::coneAngle).field("penumbraAngle", &Cone::penumbraAngle);
    cone.field("dropoff", &Cone::dropoff);
    cone.def(
        "__eq__", [](const Cone& a, const Cone& b) { return a == b; }, nb::is_operator());

    using Directional = Light::DirectionalInterface;
    Class<Directional, PyDirectional> directional(type, "DirectionalInterface",
                                                  "Light::DirectionalInterface");
    directional.def(nb::init<>());
    KIV_VALUE(directional, Directional, float, angle);
    using Area = Light::AreaInterface;
    Class<Area, PyArea> area(type, "AreaInterface", "Light::AreaInterface");
    area.def(nb::init<>());
    KIV_VALUE(area, Area, bool, normalize);
    using Spheres = Light::SphereInterface;
    Class<Spheres, PySphere> spheres(type, "SphereInterface", "Light::SphereInterface");
    spheres.def(nb::init<>());
    spheres.settable(
        "sphereProps", static_cast<Sphere (Spheres::*)() const>(&Spheres::sphereProps),
        [](Spheres& self, const Sphere& props) { self.sphereProps(props.radius, props.asPoint); });
    spheres.method("spherePropsCmd", &Spheres::spherePropsCmd, "radius"_a, "as_point"_a);
    using Cones = Light::ConeInterface;
    Class<Cones, PyCone> cones(type, "ConeInterface", "Light::ConeInterface");
    cones.def(nb::init<>());
    cones.settable("coneProps", static_cast<Cone (Cones::*)() const>(&Cones::coneProps),
                   [](Cones& self, const Cone& props) {
                       self.coneProps(props.coneAngle, props.penumbraAngle, props.dropoff);
                   });
    cones.method("conePropsCmd", &Cones::conePropsCmd, "cone_angle"_a, "penumbra_angle"_a,
                 "dropoff"_a);
}

void bindLight(nb::module_& module)
{
    using kiv::Color3f;
    using kiv::Light;
    Class<Light> type(module, "Light");
    enumeration<Light::Type>(type, "Type", "Light::Type",
                             {{"Other", Light::Other},
                              {"Directional", Light::Directional},
                              {"Point", Light::Point},
                              {"Spot", Light::Spot},
                              {"Area", Light::Area}});
    bindLightParts(type);
    type.def_static("of", &Light::light, "item"_a, contract("Light::light"));
    type.property("path", [](const Light& self) { return self.path(); });
    type.property("sceneItem", &Light::sceneItem);
    type.property("type", &Light::type);
    KIV_VALUE(type, Light, float, intensity);
    KIV_VALUE(type, Light, bool, shadowEnable);
    KIV_VALUE(type, Light, float, diffuse);
    KIV_VALUE(type, Light, float, specular);
    type.settable(
        "color", static_cast<Color3f (Light::*)() const>(&Light::color),
        [](Light& self, const Color3f& color) { self.color(color.r(), color.g(), color.b()); });
    type.method("colorCmd", &Light::colorCmd, "r"_a, "g"_a, "b"_a);
    type.settable("shadowColor", static_cast<Color3f (Light::*)() const>(&Light::shadowColor),
                  [](Light& self, const Color3f& color) {
                      self.shadowColor(color.r(), color.g(), color.b());
                  });
    type.method("shadowColorCmd", &Light::shadowColorCmd, "r"_a, "g"_a, "b"_a);
    const auto part = [&](const char* name, auto get) {
        type.property(name, [get](Light& self) { return (self.*get)(); });
    };
    part("directionalInterface", &Light::directionalInterface);
    part("sphereInterface", &Light::sphereInterface);
    part("coneInterface", &Light::coneInterface);
    part("areaInterface", &Light::areaInterface);
    bindItemObservers<Light>(type);
    type.function("notify", &Light::notify, "path"_a);
    Class<kiv::LightHandler, PyLightHandler> handler(module, "LightHandler");
    handler.def(nb::init<>());
    handler.method("light", &kiv::LightHandler::light, "item"_a);
}

void bindObject(nb::module_& module)
{
    using kiv::Object3d;
    Class<Object3d> type(module, "Object3d");
    type.def_static("of", &Object3d::object3d, "item"_a, contract("Object3d::object3d"));
    type.property("sceneItem", &Object3d::sceneItem);
    type.property("boundingBox", &Object3d::boundingBox);
    type.settable("visibility", &Object3d::visibility,
                  [](Object3d& self, bool visible) { self.setVisibility(visible); });
    type.method("setVisibility", &Object3d::setVisibility, "visible"_a);
    type.method("setVisibilityCmd", &Object3d::setVisibilityCmd, "visible"_a);
    bindGlobalObservers<Object3d>(type);
    type.function("notify", &Object3d::notify, "notification"_a);
    Class<kiv::Object3dHandler, PyObject3dHandler> handler(module, "Object3dHandler");
    handler.def(nb::init<>());
    handler.method("object3d", &kiv::Object3dHandler::object3d, "item"_a);

    Class<kiv::Material, PyMaterial> material(module, "Material");
    material.def(nb::init<>());
    material.def_static("of", &kiv::Material::material, "item"_a, contract("Material::material"));
    material.property("materials", &kiv::Material::materials);
    Class<kiv::MaterialHandler, PyMaterialHandler> materials(module, "MaterialHandler");
    materials.def(nb::init<>());
    materials.method("material", &kiv::MaterialHandler::material, "item"_a);
}

} // namespace

void bindObjects(nb::module_& module)
{
    bindTransformRead(module);
    bindTransform(module);
    bindCamera(module);
    bindLight(module);
    bindObject(module);
}

} // namespace bound
