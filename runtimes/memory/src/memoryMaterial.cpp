#include "memoryMaterial.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "kiv/pathString.h"

#include "announcements.h"
#include "memoryItem.h"
#include "nodeTypes.h"
#include "propertyCommands.h"

namespace Kiv_v4::memory {

namespace {

/// The object by which others refer to a node without keeping it. It dies with the node, and a copy
/// of the node has another.
struct Identity
{
    struct Target
    {
        Node* node;
    };

    Identity() = default;
    Identity(const Identity&) {}
    Identity& operator=(const Identity&) = delete;

    static std::weak_ptr<Target> of(Node& node)
    {
        auto& target = node.properties.edit<Identity>()._target;
        if (!target) {
            target = std::make_shared<Target>(Target{&node});
        }
        return target;
    }

private:
    std::shared_ptr<Target> _target;
};

using Bindings = std::vector<std::weak_ptr<Identity::Target>>;

struct MaterialRecord
{
    Bindings bindings;

    static void announce(const Path& path, const Node& node)
    {
        announceInvalidate(makeItem(path, node));
    }
};

bool isInScene(Tree& tree, const Node* node) noexcept
{
    while (node->parent) {
        node = node->parent;
    }
    return node == &tree.root();
}

Node& existingMaterial(Tree& tree, const Path& path)
{
    auto& node = existing(tree, path);
    if (node.type != kMaterial) {
        throw std::invalid_argument("'" + PathString::string(path) + "' is not a material.");
    }
    return node;
}

} // namespace

template <>
struct Setting<Bindings>
{
    using Command = BaseUndoableCommand;
    static std::optional<Bindings> from(const Bindings& bindings) { return bindings; }
};

namespace {

class MemoryMaterial : public Material
{
public:
    explicit MemoryMaterial(ItemProperties properties) : _properties(std::move(properties)) {}

    [[nodiscard]] std::vector<SceneItem::Ptr> materials() const override
    {
        auto& tree = *_properties.tree();
        std::vector<SceneItem::Ptr> items;
        for (const auto& binding : _properties.get(&MaterialRecord::bindings)) {
            const auto target = binding.lock();
            if (target && isInScene(tree, target->node)) {
                items.push_back(makeItem(tree.pathOf(*target->node), *target->node));
            }
        }
        return items;
    }

private:
    const ItemProperties _properties;
};

class MemoryMaterialHandler : public MaterialHandler
{
public:
    explicit MemoryMaterialHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

    [[nodiscard]] Material::Ptr material(const SceneItem::Ptr& item) override
    {
        return _tree->find(*item) ? std::make_shared<MemoryMaterial>(ItemProperties(_tree, item))
                                  : nullptr;
    }

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace

UndoableCommand::Ptr materialsCmd(const std::shared_ptr<Tree>& tree, const Path& item,
                                  const std::vector<Path>& materials)
{
    std::vector<Node*> nodes;
    for (const auto& path : materials) {
        auto& node = existingMaterial(*tree, path);
        if (std::find(nodes.begin(), nodes.end(), &node) == nodes.end()) {
            nodes.push_back(&node);
        }
    }
    Bindings bindings;
    for (auto* node : nodes) {
        bindings.push_back(Identity::of(*node));
    }
    return propertyCmd(tree, item, "Bind materials to", &MaterialRecord::bindings, bindings);
}

MaterialHandler::Ptr makeMaterialHandler(const std::shared_ptr<Tree>& tree)
{
    return std::make_shared<MemoryMaterialHandler>(tree);
}

} // namespace Kiv_v4::memory
