#include "kiv/kit/affine.h"
#include "kiv/kit/cameras.h"
#include "kiv/kit/lights.h"
#include "kiv/kit/transforms.h"

#include "values.h"

namespace bound {

namespace {

namespace kit = kiv::kit;
using kiv::Vector3d;

template <class Access>
void bindAccess(nb::module_& module, const char* name)
{
    Class<Access> type(module, name, std::string("kit::") + name);
    type.def(
        "__init__",
        [](Access* self, decltype(Access::get) get, decltype(Access::set) set) {
            new (self) Access{std::move(get), std::move(set)};
        },
        "get"_a, "set"_a.none() = nb::none());
}

void bindObjectValues(nb::module_& module)
{
    using kit::CameraValues;
    Class<CameraValues> camera(module, "CameraValues", "kit::CameraValues");
    camera.def(nb::init<>());
    camera.field("horizontalAperture", &CameraValues::horizontalAperture)
        .field("verticalAperture", &CameraValues::verticalAperture)
        .field("horizontalApertureOffset", &CameraValues::horizontalApertureOffset)
        .field("verticalApertureOffset", &CameraValues::verticalApertureOffset)
        .field("fStop", &CameraValues::fStop)
        .field("focalLength", &CameraValues::focalLength)
        .field("focusDistance", &CameraValues::focusDistance)
        .field("nearClipPlane", &CameraValues::nearClipPlane)
        .field("farClipPlane", &CameraValues::farClipPlane)
        .field("projection", &CameraValues::projection);
    bindAccess<kit::CameraAccess>(module, "CameraAccess");
    function(module, "kit::", "cameraHandler",
             nb::overload_cast<kit::CameraAccess>(&kit::cameraHandler), "access"_a);

    using kit::LightValues;
    Class<LightValues> light(module, "LightValues", "kit::LightValues");
    light.def(nb::init<>());
    light.field("type", &LightValues::type)
        .field("intensity", &LightValues::intensity)
        .field("color", &LightValues::color)
        .field("shadowEnable", &LightValues::shadowEnable)
        .field("shadowColor", &LightValues::shadowColor)
        .field("diffuse", &LightValues::diffuse)
        .field("specular", &LightValues::specular)
        .field("angle", &LightValues::angle)
        .field("sphere", &LightValues::sphere)
        .field("cone", &LightValues::cone)
        .field("normalize", &LightValues::normalize);
    bindAccess<kit::LightAccess>(module, "LightAccess");
    function(module, "kit::", "lightHandler",
             nb::overload_cast<kit::LightAccess>(&kit::lightHandler), "access"_a);
}

void bindAccesses(nb::module_& module)
{
    using kit::AffineFactors;
    Class<AffineFactors> factors(module, "AffineFactors", "kit::AffineFactors");
    factors.def(
        "__init__",
        [](AffineFactors* self, Vector3d scale, Vector3d shear, Vector3d rotation,
           Vector3d translation) {
            new (self) AffineFactors{scale, shear, rotation, translation};
        },
        "scale"_a = Vector3d({1, 1, 1}), "shear"_a = Vector3d(), "rotation"_a = Vector3d(),
        "translation"_a = Vector3d());
    factors.field("scale", &AffineFactors::scale).field("shear", &AffineFactors::shear);
    factors.field("rotation", &AffineFactors::rotation)
        .field("translation", &AffineFactors::translation);

    bindAccess<kit::MatrixAccess>(module, "MatrixAccess");
    bindAccess<kit::FactorsAccess>(module, "FactorsAccess");
    using Named = kit::AttributesAccess;
    Class<Named> named(module, "AttributesAccess", "kit::AttributesAccess");
    named.def(
        "__init__",
        [](Named* self, kit::AttributeTable::Ptr table, std::string translation,
           std::string rotation, std::string scale, std::string shear) {
            new (self) Named{std::move(table), std::move(translation), std::move(rotation),
                             std::move(scale), std::move(shear)};
        },
        "table"_a, "translation"_a = "translation", "rotation"_a = "rotation", "scale"_a = "scale",
        "shear"_a = "");
    function(module, "kit::", "transformHandler",
             nb::overload_cast<kit::MatrixAccess>(&kit::transformHandler), "access"_a);
    function(module, "kit::", "transformHandler",
             nb::overload_cast<kit::FactorsAccess>(&kit::transformHandler), "access"_a);
    function(module, "kit::", "transformHandler",
             nb::overload_cast<kit::AttributesAccess>(&kit::transformHandler), "access"_a);
}

void bindAffine(nb::module_& module)
{
    using kit::RotationOrder;
    enumeration<RotationOrder>(module, "RotationOrder", "kit::RotationOrder",
                               {{"XYZ", RotationOrder::XYZ},
                                {"YZX", RotationOrder::YZX},
                                {"ZXY", RotationOrder::ZXY},
                                {"XZY", RotationOrder::XZY},
                                {"YXZ", RotationOrder::YXZ},
                                {"ZYX", RotationOrder::ZYX}});
    using kit::Quaternion;
    Class<Quaternion> quaternion(module, "Quaternion", "kit::Quaternion");
    quaternion.def(
        "__init__",
        [](Quaternion* self, double x, double y, double z, double w) {
            new (self) Quaternion{x, y, z, w};
        },
        "x"_a = 0.0, "y"_a = 0.0, "z"_a = 0.0, "w"_a = 1.0);
    quaternion.field("x", &Quaternion::x).field("y", &Quaternion::y);
    quaternion.field("z", &Quaternion::z).field("w", &Quaternion::w);
    function(module, "kit::", "radians", &kit::radians, "degrees"_a);
    function(module, "kit::", "degrees", &kit::degrees, "radians"_a);
    function(module, "kit::", "identity", &kit::identity);
    function(module, "kit::", "translationMatrix", &kit::translationMatrix, "translation"_a);
    function(
        module, "kit::", "rotationMatrix",
        [](const Vector3d& degrees, RotationOrder order) {
            return kit::rotationMatrix(degrees, order);
        },
        "degrees"_a, "order"_a = RotationOrder::XYZ);
    function(
        module, "kit::", "rotationMatrix",
        [](const Quaternion& q) { return kit::rotationMatrix(q); }, "quaternion"_a);
    function(module, "kit::", "rotationAngles", &kit::rotationAngles, "matrix"_a,
             "order"_a = RotationOrder::XYZ);
    function(module, "kit::", "quaternion", &kit::quaternion, "matrix"_a);
    function(module, "kit::", "scaleShearMatrix", &kit::scaleShearMatrix, "scale"_a, "shear"_a);
    function(module, "kit::", "composed", &kit::composed, "factors"_a);
    function(module, "kit::", "decomposed", &kit::decomposed, "matrix"_a);
    function(module, "kit::", "inverse", &kit::inverse, "matrix"_a);
    function(module, "kit::", "lookAt", &kit::lookAt, "eye"_a, "target"_a,
             "up"_a = Vector3d({0, 1, 0}));
    function(module, "kit::", "transformedPoint", &kit::transformedPoint, "point"_a, "matrix"_a);
    function(module, "kit::", "transformedDirection", &kit::transformedDirection, "direction"_a,
             "matrix"_a);
    function(module, "kit::", "transformed", &kit::transformed, "box"_a, "matrix"_a);
}

} // namespace

void bindTransforms(nb::module_& module)
{
    bindAffine(module);
    bindAccesses(module);
    bindObjectValues(module);
}

} // namespace bound
