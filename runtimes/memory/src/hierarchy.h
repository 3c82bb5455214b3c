#pragma once

#include <memory>

#include "kiv/hierarchy.h"
#include "kiv/hierarchyHandler.h"

#include "tree.h"

namespace Kiv_v4::memory {

/// The structure around one item, looked up in the scene at each call.
class MemoryHierarchy : public Hierarchy
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

private:
    [[nodiscard]] Node* node() const noexcept;
    [[nodiscard]] SceneItemList ownChildren() const;
    [[nodiscard]] SceneItemList mountedItems() const;

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
