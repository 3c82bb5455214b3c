#include "assimpObject3d.h"

#include <utility>
#include <vector>

#include "assimpTransform.h"

namespace Kiv_v4::assimp {

namespace {

bool setVisible(VisibilityRecord& record, bool visible)
{
    record.visible = visible;
    return true;
}

/// The box around the node and its descendants, in the node's space.
BoundingBox3d boxAround(const SceneFile& file, const Edits& edits, NodeIndex top)
{
    struct Level
    {
        NodeIndex index;
        Matrix4d toTop;
    };
    BoundingBox3d box;
    std::vector<Level> pending{{top, kit::identity()}};
    while (!pending.empty()) {
        const auto level = pending.back();
        pending.pop_back();
        if (const auto* own = file.contents().box(level.index)) {
            box.extend(kit::transformed(*own, level.toTop));
        }
        const auto& node = file.node(level.index);
        for (auto i = node.firstChild; i < node.firstChild + node.nbChildren; ++i) {
            pending.push_back({i, matrixOf(file, edits, i) * level.toTop});
        }
    }
    return box;
}

class AssimpObject3d : public Object3d
{
public:
    explicit AssimpObject3d(MountedNode node) : _node(std::move(node)) {}

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _node.item(); }

    [[nodiscard]] BoundingBox3d boundingBox() const override
    {
        return boxAround(_node.file(), _node.edits(), _node.index());
    }

    [[nodiscard]] bool visibility() const override { return _node.get(&VisibilityRecord::visible); }

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
        return _node.changeCmd<SetBoolUndoableCommand>(visible ? "Show" : "Hide", &setVisible,
                                                       visible);
    }

private:
    const MountedNode _node;
};

class AssimpObject3dHandler : public Object3dHandler
{
public:
    explicit AssimpObject3dHandler(std::shared_ptr<const Mounts> mounts)
        : _mounts(std::move(mounts))
    {}

    [[nodiscard]] Object3d::Ptr object3d(const SceneItem::Ptr& item) override
    {
        const auto node = _mounts->node(item);
        return node ? std::make_shared<AssimpObject3d>(*node) : nullptr;
    }

private:
    const std::shared_ptr<const Mounts> _mounts;
};

} // namespace

Object3dHandler::Ptr makeObject3dHandler(const std::shared_ptr<const Mounts>& mounts)
{
    return std::make_shared<AssimpObject3dHandler>(mounts);
}

} // namespace Kiv_v4::assimp
