#include "memoryObject3d.h"

#include <utility>
#include <vector>

#include "kiv/kit/affine.h"
#include "kiv/object3dNotification.h"

#include "announcements.h"
#include "memoryItem.h"
#include "memoryTransform.h"
#include "propertyCommands.h"

namespace Kiv_v4::memory {

namespace {

struct VisibilityRecord
{
    bool visible = true;

    static void announce(const Path& path, const Node&)
    {
        Object3d::notify(VisibilityChanged(path));
    }
};

struct BoxRecord
{
    BoundingBox3d box;

    static void announce(const Path& path, const Node& node)
    {
        announceInvalidate(makeItem(path, node));
    }
};

/// The box around the node and its descendants, in the node's space.
BoundingBox3d boxAround(const Node& top)
{
    auto box = ownBoxOf(top);
    std::vector<Matrix4d> toTop{kit::identity()}; // of the ancestors from the top down to the node
    for (const auto* node = &top;;) {
        if (node->firstChild) {
            node = node->firstChild;
            toTop.push_back(toTop.back());
        } else {
            while (node != &top && !node->next) {
                node = node->parent;
                toTop.pop_back();
            }
            if (node == &top) {
                return box;
            }
            node = node->next;
        }
        toTop.back() = matrixOf(*node) * toTop[toTop.size() - 2];
        box.extend(kit::transformed(ownBoxOf(*node), toTop.back()));
    }
}

} // namespace

template <>
struct Setting<BoundingBox3d>
{
    using Command = BaseUndoableCommand;
    static std::optional<BoundingBox3d> from(const BoundingBox3d& box)
    {
        const auto& [minX, minY, minZ] = box.min.vector;
        const auto& [maxX, maxY, maxZ] = box.max.vector;
        const auto finite =
            Setting<Vector3d>::from(minX, minY, minZ) && Setting<Vector3d>::from(maxX, maxY, maxZ);
        return finite || box.empty() ? std::optional(box) : std::nullopt;
    }
};

namespace {

class MemoryObject3d : public Object3d
{
public:
    explicit MemoryObject3d(ItemProperties properties) : _properties(std::move(properties)) {}

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _properties.item(); }

    [[nodiscard]] BoundingBox3d boundingBox() const override
    {
        const auto* node = _properties.node();
        return node ? boxAround(*node) : BoundingBox3d();
    }

    [[nodiscard]] bool visibility() const override
    {
        return _properties.get(&VisibilityRecord::visible);
    }

    bool setVisibility(bool visible) override
    {
        const auto command = setVisibilityCmd(visible);
        if (command) {
            command->execute();
        }
        return command != nullptr;
    }

    [[nodiscard]] UndoableCommand::Ptr setVisibilityCmd(bool visible) override
    {
        return _properties.setCmd(visible ? "Show" : "Hide", &VisibilityRecord::visible, visible);
    }

private:
    const ItemProperties _properties;
};

class MemoryObject3dHandler : public Object3dHandler
{
public:
    explicit MemoryObject3dHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

    [[nodiscard]] Object3d::Ptr object3d(const SceneItem::Ptr& item) override
    {
        return _tree->find(*item) ? std::make_shared<MemoryObject3d>(ItemProperties(_tree, item))
                                  : nullptr;
    }

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace

const BoundingBox3d& ownBoxOf(const Node& node) noexcept
{
    return node.properties.get<BoxRecord>().box;
}

UndoableCommand::Ptr ownBoxCmd(const std::shared_ptr<Tree>& tree, const Path& item,
                               const BoundingBox3d& box)
{
    return propertyCmd(tree, item, "Set bounding box of", &BoxRecord::box, box);
}

Object3dHandler::Ptr makeObject3dHandler(const std::shared_ptr<Tree>& tree)
{
    return std::make_shared<MemoryObject3dHandler>(tree);
}

} // namespace Kiv_v4::memory
