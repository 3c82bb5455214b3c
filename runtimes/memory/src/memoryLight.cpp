#include "memoryLight.h"

#include <utility>

#include "nodeTypes.h"
#include "propertyCommands.h"

namespace Kiv_v4::memory {

namespace {

struct LightRecord
{
    float intensity = 1;
    Color3f color{{1, 1, 1}};
    bool shadowEnable = true;
    Color3f shadowColor;
    float diffuse = 1;
    float specular = 1;
    float angle = 0;
    Light::SphereProps sphere;
    Light::ConeProps cone{40, 5, 0};
    bool normalize = false;

    static void announce(const Path& path, const Node&) { Light::notify(path); }
};

} // namespace

template <>
struct Setting<Light::SphereProps>
{
    using Command = SetSpherePropsUndoableCommand;
    static std::optional<Light::SphereProps> from(const Light::SphereProps& props)
    {
        return std::isfinite(props.radius) ? std::optional(props) : std::nullopt;
    }
};

template <>
struct Setting<Light::ConeProps>
{
    using Command = SetConePropsUndoableCommand;
    static std::optional<Light::ConeProps> from(const Light::ConeProps& props)
    {
        return finiteValue<Light::ConeProps>(props.coneAngle, props.penumbraAngle, props.dropoff);
    }
};

namespace {

using Cmd = UndoableCommand::Ptr;

/// One of the interfaces of a kind.
template <class Interface>
class OfKind : public Interface
{
public:
    explicit OfKind(ItemProperties properties) : _properties(std::move(properties)) {}

protected:
    const ItemProperties _properties;
};

class MemoryDirectional : public OfKind<Light::DirectionalInterface>
{
public:
    using OfKind::OfKind;

    [[nodiscard]] Cmd angleCmd(float value) override
    {
        return _properties.setCmd("Set angle of", &LightRecord::angle, value);
    }
    [[nodiscard]] float angle() const override { return _properties.get(&LightRecord::angle); }
};

class MemorySphere : public OfKind<Light::SphereInterface>
{
public:
    using OfKind::OfKind;

    [[nodiscard]] Cmd spherePropsCmd(float radius, bool asPoint) override
    {
        return _properties.setCmd("Set sphere of", &LightRecord::sphere,
                                  Light::SphereProps{radius, asPoint});
    }
    [[nodiscard]] Light::SphereProps sphereProps() const override
    {
        return _properties.get(&LightRecord::sphere);
    }
};

class MemoryCone : public OfKind<Light::ConeInterface>
{
public:
    using OfKind::OfKind;

    [[nodiscard]] Cmd conePropsCmd(float coneAngle, float penumbraAngle, float dropoff) override
    {
        return _properties.setCmd("Set cone of", &LightRecord::cone,
                                  Light::ConeProps{coneAngle, penumbraAngle, dropoff});
    }
    [[nodiscard]] Light::ConeProps coneProps() const override
    {
        return _properties.get(&LightRecord::cone);
    }
};

class MemoryArea : public OfKind<Light::AreaInterface>
{
public:
    using OfKind::OfKind;

    [[nodiscard]] Cmd normalizeCmd(bool value) override
    {
        return _properties.setCmd("Set normalize of", &LightRecord::normalize, value);
    }
    [[nodiscard]] bool normalize() const override
    {
        return _properties.get(&LightRecord::normalize);
    }
};

class MemoryLight : public Light
{
    using Values = LightRecord;

public:
    MemoryLight(ItemProperties properties, Type type)
        : _properties(std::move(properties)), _type(type)
    {}

    [[nodiscard]] const Path& path() const override { return _properties.path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _properties.item(); }
    [[nodiscard]] Type type() const override { return _type; }

    [[nodiscard]] Cmd intensityCmd(float value) override
    {
        return _properties.setCmd("Set intensity of", &Values::intensity, value);
    }
    [[nodiscard]] float intensity() const override { return _properties.get(&Values::intensity); }

    [[nodiscard]] Cmd colorCmd(float r, float g, float b) override
    {
        return _properties.setCmd("Set color of", &Values::color, Color3f({r, g, b}));
    }
    [[nodiscard]] Color3f color() const override { return _properties.get(&Values::color); }

    [[nodiscard]] Cmd shadowEnableCmd(bool value) override
    {
        return _properties.setCmd("Set shadows of", &Values::shadowEnable, value);
    }
    [[nodiscard]] bool shadowEnable() const override
    {
        return _properties.get(&Values::shadowEnable);
    }

    [[nodiscard]] Cmd shadowColorCmd(float r, float g, float b) override
    {
        return _properties.setCmd("Set shadow color of", &Values::shadowColor, Color3f({r, g, b}));
    }
    [[nodiscard]] Color3f shadowColor() const override
    {
        return _properties.get(&Values::shadowColor);
    }

    [[nodiscard]] Cmd diffuseCmd(float value) override
    {
        return _properties.setCmd("Set diffuse of", &Values::diffuse, value);
    }
    [[nodiscard]] float diffuse() const override { return _properties.get(&Values::diffuse); }

    [[nodiscard]] Cmd specularCmd(float value) override
    {
        return _properties.setCmd("Set specular of", &Values::specular, value);
    }
    [[nodiscard]] float specular() const override { return _properties.get(&Values::specular); }

protected:
    [[nodiscard]] DirectionalInterface::Ptr directionalInterfaceImpl() override
    {
        return std::make_shared<MemoryDirectional>(_properties);
    }
    [[nodiscard]] SphereInterface::Ptr sphereInterfaceImpl() override
    {
        return std::make_shared<MemorySphere>(_properties);
    }
    [[nodiscard]] ConeInterface::Ptr coneInterfaceImpl() override
    {
        return std::make_shared<MemoryCone>(_properties);
    }
    [[nodiscard]] AreaInterface::Ptr areaInterfaceImpl() override
    {
        return std::make_shared<MemoryArea>(_properties);
    }

private:
    const ItemProperties _properties;
    const Type _type;
};

class MemoryLightHandler : public LightHandler
{
public:
    explicit MemoryLightHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

    [[nodiscard]] Light::Ptr light(const SceneItem::Ptr& item) override
    {
        const auto* node = _tree->find(*item);
        const auto kind = node ? lightKind(node->type) : std::nullopt;
        return kind ? std::make_shared<MemoryLight>(ItemProperties(_tree, item), *kind) : nullptr;
    }

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace

LightHandler::Ptr makeLightHandler(const std::shared_ptr<Tree>& tree)
{
    return std::make_shared<MemoryLightHandler>(tree);
}

} // namespace Kiv_v4::memory
