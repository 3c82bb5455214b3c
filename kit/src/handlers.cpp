#include "kiv/kit/handlers.h"

#include <utility>

#include "itemWalk.h"

namespace Kiv_v4::kit {

namespace {

/// Overrides the one operation, `make`, of a handler interface.
#define KIV_KIT_HANDLER(Name, Interface, make, constness)                                          \
    class Name : public Interface##Handler                                                         \
    {                                                                                              \
    public:                                                                                        \
        explicit Name(Maker<Interface> maker) : _maker(std::move(maker)) {}                        \
        [[nodiscard]] Interface::Ptr make(const SceneItem::Ptr& item) constness override           \
        {                                                                                          \
            return _maker(item);                                                                   \
        }                                                                                          \
                                                                                                   \
    private:                                                                                       \
        const Maker<Interface> _maker;                                                             \
    }

KIV_KIT_HANDLER(FunctionSceneItemOpsHandler, SceneItemOps, sceneItemOps, );
KIV_KIT_HANDLER(FunctionAttributesHandler, Attributes, attributes, );
KIV_KIT_HANDLER(FunctionTransform3dHandler, Transform3d, transform3d, const);
KIV_KIT_HANDLER(FunctionObject3dHandler, Object3d, object3d, );
KIV_KIT_HANDLER(FunctionLightHandler, Light, light, );
KIV_KIT_HANDLER(FunctionMaterialHandler, Material, material, );
KIV_KIT_HANDLER(FunctionContextOpsHandler, ContextOps, contextOps, );
KIV_KIT_HANDLER(FunctionNodeGraphNodeHandler, UINodeGraphNode, uiNodeGraphNode, );
#undef KIV_KIT_HANDLER

class FunctionCameraHandler : public CameraHandler
{
public:
    explicit FunctionCameraHandler(Maker<Camera> maker) : _maker(std::move(maker)) {}

    [[nodiscard]] Camera::Ptr camera(const SceneItem::Ptr& item) override { return _maker(item); }

    [[nodiscard]] Selection findCameras(const Path& path) override
    {
        Selection found;
        walkItems(path, [&](const SceneItem::Ptr& item) {
            if (_maker(item)) {
                found.append(item);
            }
            return true;
        });
        return found;
    }

private:
    const Maker<Camera> _maker;
};

class FunctionHierarchyHandler : public HierarchyHandler
{
public:
    FunctionHierarchyHandler(Maker<Hierarchy> maker,
                             std::function<SceneItem::Ptr(const Path&)> item,
                             std::function<SceneItemList(const Path&)> roots)
        : _maker(std::move(maker)), _item(std::move(item)), _roots(std::move(roots))
    {}

    [[nodiscard]] Hierarchy::Ptr hierarchy(const SceneItem::Ptr& item) override
    {
        return _maker(item);
    }
    [[nodiscard]] SceneItem::Ptr createItem(const Path& path) override { return _item(path); }
    [[nodiscard]] SceneItemList rootItems(const Path& gateway) override { return _roots(gateway); }

private:
    const Maker<Hierarchy> _maker;
    const std::function<SceneItem::Ptr(const Path&)> _item;
    const std::function<SceneItemList(const Path&)> _roots;
};

} // namespace

SceneItemOpsHandler::Ptr sceneItemOpsHandler(Maker<SceneItemOps> make)
{
    return std::make_shared<FunctionSceneItemOpsHandler>(std::move(make));
}

AttributesHandler::Ptr attributesHandler(Maker<Attributes> make)
{
    return std::make_shared<FunctionAttributesHandler>(std::move(make));
}

Transform3dHandler::Ptr transform3dHandler(Maker<Transform3d> make)
{
    return std::make_shared<FunctionTransform3dHandler>(std::move(make));
}

Object3dHandler::Ptr object3dHandler(Maker<Object3d> make)
{
    return std::make_shared<FunctionObject3dHandler>(std::move(make));
}

LightHandler::Ptr lightHandler(Maker<Light> make)
{
    return std::make_shared<FunctionLightHandler>(std::move(make));
}

MaterialHandler::Ptr materialHandler(Maker<Material> make)
{
    return std::make_shared<FunctionMaterialHandler>(std::move(make));
}

ContextOpsHandler::Ptr contextOpsHandler(Maker<ContextOps> make)
{
    return std::make_shared<FunctionContextOpsHandler>(std::move(make));
}

UINodeGraphNodeHandler::Ptr uiNodeGraphNodeHandler(Maker<UINodeGraphNode> make)
{
    return std::make_shared<FunctionNodeGraphNodeHandler>(std::move(make));
}

CameraHandler::Ptr cameraHandler(Maker<Camera> make)
{
    return std::make_shared<FunctionCameraHandler>(std::move(make));
}

HierarchyHandler::Ptr hierarchyHandler(Maker<Hierarchy> make,
                                       std::function<SceneItem::Ptr(const Path& path)> item,
                                       std::function<SceneItemList(const Path& gateway)> roots)
{
    return std::make_shared<FunctionHierarchyHandler>(std::move(make), std::move(item),
                                                      std::move(roots));
}

} // namespace Kiv_v4::kit
