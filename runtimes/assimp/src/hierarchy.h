#pragma once

#include <memory>
#include <vector>

#include "kiv/hierarchy.h"

#include "item.h"

namespace Kiv_v4::assimp {

/// The structure around one node or material of a file, also after the file was unmounted. A file
/// is not edited, so there is no parent for new items, and the makers of commands give null.
class AssimpHierarchy : public Hierarchy
{
public:
    /// `node` is the item of this run-time that `item` stands for; mostly the same.
    AssimpHierarchy(SceneItem::Ptr item, const Item& node);

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
    const SceneItem::Ptr _item;
    const std::shared_ptr<const SceneFile> _file;
    const NodeIndex _index;
};

} // namespace Kiv_v4::assimp
