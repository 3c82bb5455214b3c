#include "nodeGraph.h"

#include <utility>

#include "announcements.h"
#include "memoryItem.h"
#include "propertyCommands.h"

namespace Kiv_v4::memory {

namespace {

using Vector2f = TypedVectorN<float, 2>;

struct NodeGraphRecord
{
    std::optional<Vector2f> position;
    std::optional<Vector2f> size;

    static void announce(const Path& path, const Node& node)
    {
        announceInvalidate(makeItem(path, node));
    }
};

} // namespace

template <>
struct Setting<std::optional<Vector2f>>
{
    using Command = SetFloat2UndoableCommand;
    static std::optional<std::optional<Vector2f>> from(float x, float y)
    {
        if (const auto value = kit::finiteValue<Vector2f>(x, y)) {
            return std::optional<std::optional<Vector2f>>(std::in_place, *value);
        }
        return std::nullopt;
    }
};

namespace {

class MemoryNodeGraphNode : public UINodeGraphNode_v4_1
{
    using Values = NodeGraphRecord;

public:
    explicit MemoryNodeGraphNode(ItemProperties properties) : _properties(std::move(properties)) {}

    [[nodiscard]] bool hasPosition() const override
    {
        return _properties.get(&Values::position).has_value();
    }
    [[nodiscard]] Vector2f position() const override
    {
        return _properties.get(&Values::position).value_or(Vector2f());
    }
    [[nodiscard]] UndoableCommand::Ptr setPositionCmd(const Vector2f& position) override
    {
        return _properties.setCmd("Place", &Values::position, position.x(), position.y());
    }

    [[nodiscard]] bool hasSize() const override
    {
        return _properties.get(&Values::size).has_value();
    }
    [[nodiscard]] Vector2f size() const override
    {
        return _properties.get(&Values::size).value_or(Vector2f());
    }
    [[nodiscard]] UndoableCommand::Ptr setSizeCmd(const Vector2f& size) override
    {
        return _properties.setCmd("Resize", &Values::size, size.x(), size.y());
    }

private:
    const ItemProperties _properties;
};

class MemoryUINodeGraphNodeHandler : public UINodeGraphNodeHandler
{
public:
    explicit MemoryUINodeGraphNodeHandler(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

    [[nodiscard]] UINodeGraphNode::Ptr uiNodeGraphNode(const SceneItem::Ptr& item) override
    {
        return _tree->find(*item)
                   ? std::make_shared<MemoryNodeGraphNode>(ItemProperties(_tree, item))
                   : nullptr;
    }

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace

UINodeGraphNodeHandler::Ptr makeUINodeGraphNodeHandler(const std::shared_ptr<Tree>& tree)
{
    return std::make_shared<MemoryUINodeGraphNodeHandler>(tree);
}

} // namespace Kiv_v4::memory
