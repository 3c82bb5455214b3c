#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "kiv/camera.h"
#include "kiv/host/itemProperties.h"
#include "kiv/light.h"
#include "kiv/object3d.h"
#include "kiv/transform3d.h"
#include "kiv/uiNodeGraphNode.h"

namespace Kiv_v4::host {

/// An interface of an item, made by the first call.
template <class Interface>
class Once
{
public:
    template <class Get>
    const std::shared_ptr<Interface>& get(Get make)
    {
        if (!_isAsked) {
            _interface = make();
            _isAsked = true;
        }
        return _interface;
    }

private:
    std::shared_ptr<Interface> _interface;
    bool _isAsked = false;
};

struct ItemProperties::Interfaces
{
    explicit Interfaces(SceneItem::Ptr ofItem) : item(std::move(ofItem)) {}

    template <class Interface>
    std::shared_ptr<Interface> get();

    const SceneItem::Ptr item;
    Once<Transform3dRead> place;
    Once<Transform3d> transform;
    Once<Camera> camera;
    Once<Light> light;
    Once<Object3d> object;
    Once<UINodeGraphNode> graphNode;
};

using Interfaces = ItemProperties::Interfaces;

template <>
inline std::shared_ptr<Transform3dRead> Interfaces::get()
{
    return place.get([this] { return Transform3dRead::transform3dRead(item); });
}
template <>
inline std::shared_ptr<Transform3d> Interfaces::get()
{
    return transform.get([this] { return Transform3d::transform3d(item); });
}
template <>
inline std::shared_ptr<Camera> Interfaces::get()
{
    return camera.get([this] { return Camera::camera(item); });
}
template <>
inline std::shared_ptr<Light> Interfaces::get()
{
    return light.get([this] { return Light::light(item); });
}
template <>
inline std::shared_ptr<Object3d> Interfaces::get()
{
    return object.get([this] { return Object3d::object3d(item); });
}
template <>
inline std::shared_ptr<UINodeGraphNode> Interfaces::get()
{
    return graphNode.get([this] { return UINodeGraphNode::uiNodeGraphNode(item); });
}
template <>
inline std::shared_ptr<UINodeGraphNode_v4_1> Interfaces::get()
{
    return std::dynamic_pointer_cast<UINodeGraphNode_v4_1>(get<UINodeGraphNode>());
}
template <>
inline std::shared_ptr<Light::DirectionalInterface> Interfaces::get()
{
    const auto whole = get<Light>();
    return whole ? whole->directionalInterface() : nullptr;
}
template <>
inline std::shared_ptr<Light::SphereInterface> Interfaces::get()
{
    const auto whole = get<Light>();
    return whole ? whole->sphereInterface() : nullptr;
}
template <>
inline std::shared_ptr<Light::ConeInterface> Interfaces::get()
{
    const auto whole = get<Light>();
    return whole ? whole->coneInterface() : nullptr;
}
template <>
inline std::shared_ptr<Light::AreaInterface> Interfaces::get()
{
    const auto whole = get<Light>();
    return whole ? whole->areaInterface() : nullptr;
}

/// A row of the table and the access to its property.
struct Row
{
    Property property;
    std::function<std::optional<PropertyValue>(Interfaces&)> read;
    std::function<bool(Interfaces&)> canSet{};
    std::function<UndoableCommand::Ptr(Interfaces&, const PropertyValue&)> makeCmd{};
};

/// Returns the rows of all interfaces, group by group.
[[nodiscard]] std::vector<Row> makeRows();

} // namespace Kiv_v4::host
