#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "kiv/export.h"
#include "kiv/light.h"
#include "kiv/lightHandler.h"
#include "kiv/path.h"

namespace Kiv_v4::kit {

/// The values of a light of any kind, in the units of `Light`; those of other kinds are not used.
struct LightValues
{
    /// The kind of light. It cannot be set.
    Light::Type type = Light::Other;
    float intensity = 1;         ///< As `Light::intensity`.
    Color3f color{{1, 1, 1}};    ///< Linear.
    bool shadowEnable = true;    ///< As `Light::shadowEnable`.
    Color3f shadowColor;         ///< Linear; black.
    float diffuse = 1;           ///< As `Light::diffuse`.
    float specular = 1;          ///< As `Light::specular`.
    float angle = 0;             ///< Of a directional light, in degrees.
    Light::SphereProps sphere{}; ///< Of a point or spot light.
    Light::ConeProps cone{};     ///< Of a spot light.
    bool normalize = false;      ///< Of an area light.
};

/// For data that give and take all values of a light at once.
struct LightAccess
{
    /// Returns the values of the light at a path; `std::nullopt` if there is no such item or it is
    /// not a light.
    std::function<std::optional<LightValues>(const Path& path)> get;
    /// Writes the values; must throw if it cannot. Empty if nothing can be edited. The kit
    /// announces the change.
    std::function<void(const Path& path, const LightValues& values)> set;
};

/// Returns a handler of complete lights, with undo, drags and notifications; NaN and infinity are
/// refused.
[[nodiscard]] KIV_EXPORT LightHandler::Ptr lightHandler(LightAccess access);

/// A light on values that `Source` keeps for one item, as `CameraOf` describes it, of members of
/// `LightValues`.
template <class Source>
class LightOf : public Light
{
    using Cmd = UndoableCommand::Ptr;
    using Values = LightValues;

public:
    explicit LightOf(Source source) : _source(std::move(source)) {}

    [[nodiscard]] const Path& path() const override { return _source.item()->path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _source.item(); }
    [[nodiscard]] Type type() const override { return _source.get(&Values::type); }

    [[nodiscard]] Cmd intensityCmd(float value) override
    {
        return _source.setCmd("Set intensity of", &Values::intensity, value);
    }
    [[nodiscard]] float intensity() const override { return _source.get(&Values::intensity); }

    [[nodiscard]] Cmd colorCmd(float r, float g, float b) override
    {
        return _source.setCmd("Set color of", &Values::color, Color3f({r, g, b}));
    }
    [[nodiscard]] Color3f color() const override { return _source.get(&Values::color); }

    [[nodiscard]] Cmd shadowEnableCmd(bool value) override
    {
        return _source.setCmd("Set shadows of", &Values::shadowEnable, value);
    }
    [[nodiscard]] bool shadowEnable() const override { return _source.get(&Values::shadowEnable); }

    [[nodiscard]] Cmd shadowColorCmd(float r, float g, float b) override
    {
        return _source.setCmd("Set shadow color of", &Values::shadowColor, Color3f({r, g, b}));
    }
    [[nodiscard]] Color3f shadowColor() const override { return _source.get(&Values::shadowColor); }

    [[nodiscard]] Cmd diffuseCmd(float value) override
    {
        return _source.setCmd("Set diffuse of", &Values::diffuse, value);
    }
    [[nodiscard]] float diffuse() const override { return _source.get(&Values::diffuse); }

    [[nodiscard]] Cmd specularCmd(float value) override
    {
        return _source.setCmd("Set specular of", &Values::specular, value);
    }
    [[nodiscard]] float specular() const override { return _source.get(&Values::specular); }

protected:
    [[nodiscard]] std::shared_ptr<DirectionalInterface> directionalInterfaceImpl() override
    {
        return std::make_shared<Directional>(_source);
    }
    [[nodiscard]] std::shared_ptr<SphereInterface> sphereInterfaceImpl() override
    {
        return std::make_shared<Sphere>(_source);
    }
    [[nodiscard]] std::shared_ptr<ConeInterface> coneInterfaceImpl() override
    {
        return std::make_shared<Cone>(_source);
    }
    [[nodiscard]] std::shared_ptr<AreaInterface> areaInterfaceImpl() override
    {
        return std::make_shared<Area>(_source);
    }

    /// Returns the values' source.
    [[nodiscard]] const Source& source() const noexcept { return _source; }

private:
    /// One of the interfaces of a kind.
    template <class Interface>
    class OfKind : public Interface
    {
    public:
        explicit OfKind(Source source) : _source(std::move(source)) {}

    protected:
        const Source _source;
    };

    class Directional : public OfKind<DirectionalInterface>
    {
    public:
        using OfKind<DirectionalInterface>::OfKind;

        [[nodiscard]] Cmd angleCmd(float value) override
        {
            return this->_source.setCmd("Set angle of", &Values::angle, value);
        }
        [[nodiscard]] float angle() const override { return this->_source.get(&Values::angle); }
    };

    class Sphere : public OfKind<SphereInterface>
    {
    public:
        using OfKind<SphereInterface>::OfKind;

        [[nodiscard]] Cmd spherePropsCmd(float radius, bool asPoint) override
        {
            return this->_source.setCmd("Set sphere of", &Values::sphere,
                                        SphereProps{radius, asPoint});
        }
        [[nodiscard]] SphereProps sphereProps() const override
        {
            return this->_source.get(&Values::sphere);
        }
    };

    class Cone : public OfKind<ConeInterface>
    {
    public:
        using OfKind<ConeInterface>::OfKind;

        [[nodiscard]] Cmd conePropsCmd(float coneAngle, float penumbraAngle, float dropoff) override
        {
            return this->_source.setCmd("Set cone of", &Values::cone,
                                        ConeProps{coneAngle, penumbraAngle, dropoff});
        }
        [[nodiscard]] ConeProps coneProps() const override
        {
            return this->_source.get(&Values::cone);
        }
    };

    class Area : public OfKind<AreaInterface>
    {
    public:
        using OfKind<AreaInterface>::OfKind;

        [[nodiscard]] Cmd normalizeCmd(bool value) override
        {
            return this->_source.setCmd("Set normalize of", &Values::normalize, value);
        }
        [[nodiscard]] bool normalize() const override
        {
            return this->_source.get(&Values::normalize);
        }
    };

    const Source _source;
};

} // namespace Kiv_v4::kit
