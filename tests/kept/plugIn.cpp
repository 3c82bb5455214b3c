// A plug-in as an author of this release wrote it; see keptHost.cpp. A wardrobe with drawers, on
// the kit and on the interfaces of the core themselves.
#include <list>

#include "kiv/kit/attributeTable.h"
#include "kiv/kit/bases.h"
#include "kiv/kit/cameras.h"
#include "kiv/kit/handlerBases.h"
#include "kiv/kit/handlers.h"
#include "kiv/kit/nodeTree.h"
#include "kiv/kit/transforms.h"
#include "kiv/kiv.h"

namespace {

namespace kit = Kiv::kit;

struct Drawer
{
    std::string name;
    Kiv::Matrix4d matrix = kit::identity();
    float width = 0.5F;
    kit::CameraValues view = {};
    std::list<Drawer> inside = {};
};

class Wardrobe : public kit::NodeTree<Drawer*>
{
    using Drawers = std::list<Drawer>;

public:
    explicit Wardrobe(Kiv::Rtid id) : NodeTree(Kiv::PathSegment("wardrobe", id, '/'))
    {
        _top.name = "wardrobe";
        _top.inside.push_back({"socks"});
        _top.inside.push_back({"hats"});
    }

    bool accepts(const Kiv::Path&, const std::string&) const override { return true; }
    Part make(const std::string&) override { return part({}); }
    Part copy(const Kiv::Path& path) override { return part(*existing(path)); }
    Part take(const Kiv::Path& path) override
    {
        const auto taken = part(*existing(path));
        existing(path.pop())->inside.remove_if([&](const Drawer& each) {
            return each.name == path.back().string();
        });
        return taken;
    }
    void put(const Kiv::Path& path, const Part& part, std::size_t row) override
    {
        auto& into = existing(path.pop())->inside;
        auto& drawer = *std::static_pointer_cast<Drawer>(part);
        drawer.name = path.back().string();
        into.insert(row < into.size() ? std::next(into.begin(), static_cast<long>(row))
                                      : into.end(),
                    drawer);
    }

protected:
    Drawer* rootNode() const override { return &_top; }
    std::vector<Drawer*> childNodes(Drawer* drawer) const override
    {
        std::vector<Drawer*> drawers;
        for (auto& each : drawer->inside) {
            drawers.push_back(&each);
        }
        return drawers;
    }
    Child described(Drawer* drawer) const override { return {drawer->name, "drawer"}; }

private:
    static Part part(const Drawer& drawer) { return std::make_shared<Drawer>(drawer); }

    mutable Drawer _top;
};

class Front : public kit::Object3dBase
{
public:
    using Object3dBase::Object3dBase;

    Kiv::BoundingBox3d boundingBox() const override
    {
        return Kiv::BoundingBox3d(Kiv::Vector3d({0, 0, 0}), Kiv::Vector3d({1, 2, 3}));
    }
};

class Look : public kit::UIInfoHandlerBase
{
public:
    using UIInfoHandlerBase::UIInfoHandlerBase;

    std::string treeViewTooltip(const Kiv::SceneItem::Ptr& item) const override
    {
        return "the drawer " + item->nodeName();
    }
};

class Furniture
{
public:
    Furniture()
    {
        const auto id = _registration.id();
        const auto tree = std::make_shared<Wardrobe>(id);
        kit::registerTree(id, tree);
        const auto table = std::make_shared<kit::AttributeTable>();
        table->add({"width", Kiv::Attribute::kFloat,
                    [tree](const Kiv::Path& path) {
                        const auto* drawer = tree->find(path);
                        return drawer ? Kiv::AttributeVariant(drawer->width)
                                      : Kiv::AttributeVariant();
                    },
                    [tree](const Kiv::Path& path, const Kiv::AttributeVariant& value) {
                        tree->existing(path)->width = std::get<float>(value);
                    }});
        auto& manager = Kiv::RunTimeMgr::instance();
        manager.setAttributesHandler(id, kit::attributesHandler(table));
        manager.setTransform3dHandler(
            id, kit::transformHandler(kit::MatrixAccess{
                    [tree](const Kiv::Path& path) {
                        const auto* drawer = tree->find(path);
                        return drawer ? std::optional<Kiv::Matrix4d>(drawer->matrix) : std::nullopt;
                    },
                    [tree](const Kiv::Path& path, const Kiv::Matrix4d& matrix) {
                        tree->existing(path)->matrix = matrix;
                    }}));
        manager.setCameraHandler(id, kit::cameraHandler(kit::CameraAccess{
                                         [tree](const Kiv::Path& path) {
                                             const auto* drawer = tree->find(path);
                                             return drawer ? std::optional<kit::CameraValues>(
                                                                 drawer->view)
                                                           : std::nullopt;
                                         },
                                         nullptr}));
        manager.setObject3dHandler(id, kit::object3dHandler([](const Kiv::SceneItem::Ptr& item) {
                                       return std::make_shared<Front>(item);
                                   }));
        manager.setUIInfoHandler(id, std::make_shared<Look>(id));
    }

private:
    const Kiv::RunTimeRegistration _registration{"furniture", '/'};
};

} // namespace

const Kiv::PluginInfo* kivPlugin()
{
    static constexpr auto info = Kiv::pluginInfo<Furniture>("furniture");
    return &info;
}
