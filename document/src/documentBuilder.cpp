#include <memory>
#include <stdexcept>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/sceneItemOps.h"

#include "documentFormat.h"
#include "documentPlan.h"

namespace Kiv_v4::document {

namespace {

/// Executes a plan.
class Builder
{
public:
    Builder(Workspace& scene, host::Transaction& edits) : _scene(scene), _edits(edits) {}

    void build(const Plan& plan)
    {
        clear();
        for (const auto& item : plan.items) {
            doAt(item.pointer, [&] { build(item); });
        }
        for (std::size_t i = 0; i < plan.items.size(); ++i) {
            doAt(plan.items[i].pointer, [&] { bindMaterials(plan.items[i], *_items[i]); });
        }
        for (const auto& connection : plan.connections) {
            doAt(connection.pointer, [&] { connect(connection); });
        }
    }

private:
    void clear()
    {
        const auto root = _scene.root();
        for (const auto& child : Hierarchy::hierarchy(root)->children()) {
            if (_scene.isInMemory(*child)) {
                _edits.run(SceneItemOps::sceneItemOps(child)->deleteItemCmd());
            }
        }
        const auto attributes = Attributes::attributes(root);
        for (const auto& name : attributes->attributeNames()) {
            _edits.run(attributes->removeAttributeCmd(name));
        }
    }

    void build(const ItemPlan& plan)
    {
        const auto item = _items.empty() ? _scene.root() : make(plan);
        _items.push_back(item);
        for (const auto& step : plan.steps) {
            step({_scene, _edits, item});
        }
    }

    SceneItem::Ptr make(const ItemPlan& plan)
    {
        const auto parent = Hierarchy::hierarchy(_items[plan.parent]);
        auto item = _edits.runFor(parent->createChildCmd(plan.type, plan.name))->sceneItem();
        if (item->nodeName() != plan.name) {
            throw std::runtime_error("invalid item name '" + plan.name + "'");
        }
        return item;
    }

    void bindMaterials(const ItemPlan& plan, const SceneItem& item)
    {
        std::vector<Path> materials;
        for (const auto position : plan.materials) {
            materials.push_back(_items[position]->path());
        }
        if (!materials.empty() || &item == _items.front().get()) {
            _edits.run(_scene.model().setMaterialsCmd(item.path(), materials));
        }
    }

    void connect(const ConnectionPlan& plan)
    {
        const auto attribute = [this](const End& end) {
            return Attributes::attributes(_items[end.item])->attribute(end.attribute);
        };
        const auto handler = ConnectionHandler::connectionHandler(_scene.root()->runTimeId());
        _edits.run(handler->connectCmd(attribute(plan.source), attribute(plan.destination)));
    }

    Workspace& _scene;
    host::Transaction& _edits;
    std::vector<SceneItem::Ptr> _items; ///< In the order of the plan.
};

} // namespace

void carryOut(const Plan& plan, Workspace& scene, host::Transaction& edits)
{
    Builder(scene, edits).build(plan);
}

void openDocument(Workspace& scene, const std::string& text, const std::filesystem::path& folder,
                  host::Transaction& edits, const OnMissing& onMissing)
{
    carryOut(planOf(parseJson(text), scene, folder, onMissing), scene, edits);
}

} // namespace Kiv_v4::document
