#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/hierarchyHandler.h"
#include "kiv/hierarchy_v4_2.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The structure around one item, looked up in the scene at each call.
class MemoryHierarchy : public Hierarchy_v4_2
{
public:
    MemoryHierarchy(std::shared_ptr<Tree> tree, SceneItem::Ptr item);

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
    [[nodiscard]] UndoableCommand::Ptr
    createChildrenCmd(const std::string& nodeType,
                      const std::vector<PathComponent>& names) override;
    [[nodiscard]] SegmentWalk::Ptr segmentWalk() const override;

private:
    [[nodiscard]] Node* node() const noexcept;
    [[nodiscard]] SceneItem::Ptr itemOf(Node& child) const;
    [[nodiscard]] SceneItemList ownChildren() const;
    [[nodiscard]] SceneItemList mountedItems() const;
    template <class VisitOwn, class VisitMounted>
    void forRange(std::size_t first, std::size_t count, VisitOwn visitOwn,
                  VisitMounted visitMounted) const;

    const std::shared_ptr<Tree> _tree;
    const SceneItem::Ptr _item;
};

class MemoryHierarchyHandler : public HierarchyHandler
{
public:
    explicit MemoryHierarchyHandler(std::shared_ptr<Tree> tree);

    [[nodiscard]] Hierarchy::Ptr hierarchy(const SceneItem::Ptr& item) override;
    [[nodiscard]] SceneItem::Ptr createItem(const Path& path) override;
    [[nodiscard]] SceneItemList rootItems(const Path& gateway) override;

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
