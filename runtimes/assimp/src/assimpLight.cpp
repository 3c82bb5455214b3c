#include "assimpLight.h"

#include <utility>

namespace Kiv_v4::assimp {

namespace {

using Cmd = UndoableCommand::Ptr;
using Values = LightRecord;

/// One of the interfaces of a kind.
template <class Interface>
class OfKind : public Interface
{
public:
    explicit OfKind(MountedNode node) : _node(std::move(node)) {}

protected:
    const MountedNode _node;
};

class AssimpDirectional : public OfKind<Light::DirectionalInterface>
{
public:
    using OfKind::OfKind;

    [[nodiscard]] Cmd angleCmd(float value) override
    {
        return _node.assignCmd<SetFloatUndoableCommand>("Set angle of", &Values::angle, value);
    }
    [[nodiscard]] float angle() const override { return _node.get(&Values::angle); }
};

class AssimpSphere : public OfKind<Light::SphereInterface>
{
public:
    using OfKind::OfKind;

    [[nodiscard]] Cmd spherePropsCmd(float radius, bool asPoint) override
    {
        return _node.assignCmd<SetSpherePropsUndoableCommand>("Set sphere of", &Values::sphere,
                                                              {radius, asPoint});
    }
    [[nodiscard]] Light::SphereProps sphereProps() const override
    {
        return _node.get(&Values::sphere);
    }
};

class AssimpCone : public OfKind<Light::ConeInterface>
{
public:
    using OfKind::OfKind;

    [[nodiscard]] Cmd conePropsCmd(float coneAngle, float penumbraAngle, float dropoff) override
    {
        return _node.assignCmd<SetConePropsUndoableCommand>("Set cone of", &Values::cone,
                                                            {coneAngle, penumbraAngle, dropoff});
    }
    [[nodiscard]] Light::ConeProps coneProps() const override { return _node.get(&Values::cone); }
};

class AssimpArea : public OfKind<Light::AreaInterface>
{
public:
    using OfKind::OfKind;

    [[nodiscard]] Cmd normalizeCmd(bool value) override
    {
        return _node.assignCmd<SetBoolUndoableCommand>("Set normalize of", &Values::normalize,
                                                       value);
    }
    [[nodiscard]] bool normalize() const override { return _node.get(&Values::normalize); }
};

class AssimpLight : public Light
{
public:
    explicit AssimpLight(MountedNode node) : _node(std::move(node)) {}

    [[nodiscard]] const Path& path() const override { return _node.item()->path(); }
    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _node.item(); }
    [[nodiscard]] Type type() const override { return _node.get(&Values::type); }

    [[nodiscard]] Cmd intensityCmd(float value) override
    {
        return _node.assignCmd<SetFloatUndoableCommand>("Set intensity of", &Values::intensity,
                                                        value);
    }
    [[nodiscard]] float intensity() const override { return _node.get(&Values::intensity); }

    [[nodiscard]] Cmd colorCmd(float r, float g, float b) override
    {
        return _node.assignCmd<SetColor3fUndoableCommand>("Set color of", &Values::color,
                                                          Color3f({r, g, b}));
    }
    [[nodiscard]] Color3f color() const override { return _node.get(&Values::color); }

    [[nodiscard]] Cmd shadowEnableCmd(bool value) override
    {
        return _node.assignCmd<SetBoolUndoableCommand>("Set shadows of", &Values::shadowEnable,
                                                       value);
    }
    [[nodiscard]] bool shadowEnable() const override { return _node.get(&Values::shadowEnable); }

    [[nodiscard]] Cmd shadowColorCmd(float r, float g, float b) override
    {
        return _node.assignCmd<SetColor3fUndoableCommand>("Set shadow color of",
                                                          &Values::shadowColor, Color3f({r, g, b}));
    }
    [[nodiscard]] Color3f shadowColor() const override { return _node.get(&Values::shadowColor); }

    [[nodiscard]] Cmd diffuseCmd(float value) override
    {
        return _node.assignCmd<SetFloatUndoableCommand>("Set diffuse of", &Values::diffuse, value);
    }
    [[nodiscard]] float diffuse() const override { return _node.get(&Values::diffuse); }

    [[nodiscard]] Cmd specularCmd(float value) override
    {
        return _node.assignCmd<SetFloatUndoableCommand>("Set specular of", &Values::specular,
                                                        value);
    }
    [[nodiscard]] float specular() const override { return _node.get(&Values::specular); }

protected:
    [[nodiscard]] DirectionalInterface::Ptr directionalInterfaceImpl() override
    {
        return std::make_shared<AssimpDirectional>(_node);
    }
    [[nodiscard]] SphereInterface::Ptr sphereInterfaceImpl() override
    {
        return std::make_shared<AssimpSphere>(_node);
    }
    [[nodiscard]] ConeInterface::Ptr coneInterfaceImpl() override
    {
        return std::make_shared<AssimpCone>(_node);
    }
    [[nodiscard]] AreaInterface::Ptr areaInterfaceImpl() override
    {
        return std::make_shared<AssimpArea>(_node);
    }

private:
    const MountedNode _node;
};

class AssimpLightHandler : public LightHandler
{
public:
    explicit AssimpLightHandler(std::shared_ptr<const Mounts> mounts) : _mounts(std::move(mounts))
    {}

    [[nodiscard]] Light::Ptr light(const SceneItem::Ptr& item) override
    {
        const auto node = _mounts->node(item);
        return node && node->file().contents().light(node->index())
                   ? std::make_shared<AssimpLight>(*node)
                   : nullptr;
    }

private:
    const std::shared_ptr<const Mounts> _mounts;
};

} // namespace

LightHandler::Ptr makeLightHandler(const std::shared_ptr<const Mounts>& mounts)
{
    return std::make_shared<AssimpLightHandler>(mounts);
}

} // namespace Kiv_v4::assimp
