#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "kiv/hierarchy_v4_2.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// The structure around one node or material of a file; empty if none is shown at the item's path.
/// The structure of a file cannot be edited, so there is no parent for new items, and the command
/// makers return null.
class AssimpHierarchy : public Hierarchy_v4_2
{
public:
    AssimpHierarchy(std::shared_ptr<const Mounts> mounts, SceneItem::Ptr item);

    [[nodiscard]] SceneItem::Ptr sceneItem() const override;
    [[nodiscard]] bool hasChildren() const override;
    [[nodiscard]] SceneItemList children() const override;
    [[nodiscard]] bool hasFilteredChildren(const ChildFilter& filter) const override;
    [[nodiscard]] SceneItemList filteredChildren(const ChildFilter& filter) const override;
    [[nodiscard]] ChildFilter defaultChildFilter() const override;
    [[nodiscard]] SceneItem::Ptr parent() const override;
    [[nodiscard]] SceneItem::Ptr defaultParent() const override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createChildCmd(const std::string& nodeType, const PathComponent& name) override;
    [[nodiscard]] InsertChildCommand::Ptr insertChildCmd(const SceneItem::Ptr& child,
                                                         const SceneItem::Ptr& before) override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createGroupCmd(const SceneItemList& members, const PathComponent& name) override;
    [[nodiscard]] UndoableCommand::Ptr reorderCmd(const SceneItemList& orderedList) override;
    [[nodiscard]] UndoableCommand::Ptr ungroupCmd() override;
    [[nodiscard]] std::size_t nbChildren() const override;
    [[nodiscard]] std::optional<std::size_t> row(const Path& child) const override;
    [[nodiscard]] SceneItemList childRange(std::size_t first, std::size_t count) const override;
    [[nodiscard]] std::vector<ChildInfo> childInfos(std::size_t first,
                                                    std::size_t count) const override;
    [[nodiscard]] SegmentWalk::Ptr segmentWalk() const override;

private:
    /// Calls `visit(self, index)` for the children from the row `first` on.
    template <class Visit>
    void forRange(std::size_t first, std::size_t count, Visit visit) const;

    [[nodiscard]] SceneItem::Ptr below(const MountedNode& node, NodeIndex index) const;

    const std::shared_ptr<const Mounts> _mounts;
    const SceneItem::Ptr _item;
};

} // namespace Kiv_v4::assimp
