#pragma once

#include <functional>
#include <vector>

#include "kiv/attribute.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

class Attributes;
class Camera;
class ContextOps;
class Hierarchy;
class Light;
class Material;
class Object3d;
class SceneItemOps;
class Transform3d;

namespace conformance {

/// Everything that clients can keep of an item.
class Interfaces
{
public:
    /// The present interface objects, without those whose makers throw.
    [[nodiscard]] static Interfaces of(const SceneItem::Ptr& item);

    [[nodiscard]] const SceneItem::Ptr& item() const noexcept { return _item; }

    /// Calls every operation, after `before` with its name. Ignores results and exceptions derived
    /// from std::exception; executes commands.
    void use(const std::function<void(const char*)>& before) const;

private:
    explicit Interfaces(SceneItem::Ptr item) : _item(std::move(item)) {}

    using Before = std::function<void(const char*)>;
    void useHierarchy(const Before& before) const;
    void useOps(const Before& before) const;
    void useAttributes(const Before& before) const;
    void useInSpace(const Before& before) const;

    SceneItem::Ptr _item;
    std::shared_ptr<Hierarchy> _hierarchy;
    std::shared_ptr<SceneItemOps> _ops;
    std::shared_ptr<Attributes> _attributes;
    std::vector<Attribute::Ptr> _each;
    std::shared_ptr<Transform3d> _transform;
    std::shared_ptr<Object3d> _object;
    std::shared_ptr<Camera> _camera;
    std::shared_ptr<Light> _light;
    std::shared_ptr<Material> _material;
    std::shared_ptr<ContextOps> _contextOps;
};

} // namespace conformance
} // namespace Kiv_v4
