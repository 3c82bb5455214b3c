#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/hierarchyHandler.h"
#include "kiv/hierarchy_v4_2.h"

#include "tree.h"

namespace Kiv_v4::memory {

/// The structure around one item, looked up in the scene at each call.
class MemoryHierarchy : public Hierarchy_v4_2
{
public:
    MemoryHierarchy(std::shared_ptr<Tree> tree, SceneItem::Ptr item);

    [[nodiscard]] SceneItem::Ptr sceneItem() const override;
    [[nodiscard]] bool hasChildren() const override;
    [[nodiscard]] SceneItemList children() const override;
    [[nodiscard]] bool hasFilteredChildren(ChildFilter const& filter) const override;
    [[nodiscard]] SceneItemList filteredChildren(ChildFilter const& filter) const override;
    [[nodiscard]] ChildFilter defaultChildFilter() const override;
    [[nodiscard]] SceneItem::Ptr parent() const override;
    [[nodiscard]] SceneItem::Ptr defaultParent() const override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createChildCmd(std::string const& nodeType, PathComponent const& name) override;
    [[nodiscard]] InsertChildCommand::Ptr insertChildCmd(SceneItem::Ptr const& child,
                                                         SceneItem::Ptr const& before) override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createGroupCmd(SceneItemList const& members, PathComponent const& name) override;
    [[nodiscard]] UndoableCommand::Ptr reorderCmd(SceneItemList const& orderedList) override;
    [[nodiscard]] UndoableCommand::Ptr ungroupCmd() override;
    [[nodiscard]] std::size_t nbChildren() const override;
    [[nodiscard]] std::optional<std::size_t> row(Path const& child) const override;
    [[nodiscard]] SceneItemList childRange(std::size_t first, std::size_t count) const override;
    [[nodiscard]] std::vector<ChildInfo> childInfos(std::size_t first,
                                                    std::size_t count) const override;
    [[nodiscard]] UndoableCommand::Ptr
    createChildrenCmd(std::string const& nodeType,
                      std::vector<PathComponent> const& names) override;
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

    [[nodiscard]] Hierarchy::Ptr hierarchy(SceneItem::Ptr const& item) override;
    [[nodiscard]] SceneItem::Ptr createItem(Path const& path) override;
    [[nodiscard]] SceneItemList rootItems(Path const& gateway) override;

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
