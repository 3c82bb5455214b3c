#pragma once

#include <memory>

#include "kiv/contextOps.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The menu of an item: make a child of a common type, duplicate, delete, ungroup.
class MemoryContextOps : public ContextOps
{
public:
    MemoryContextOps(std::shared_ptr<Tree> tree, SceneItem::Ptr item);

    [[nodiscard]] SceneItem::Ptr sceneItem() const override;
    [[nodiscard]] std::vector<ContextItem> items(const ItemPath& itemPath) const override;
    [[nodiscard]] UndoableCommand::Ptr doOpCmd(const ItemPath& itemPath) override;

private:
    const std::shared_ptr<Tree> _tree;
    const SceneItem::Ptr _item;
};

class MemoryContextOpsHandler : public ContextOpsHandler
{
public:
    explicit MemoryContextOpsHandler(std::shared_ptr<Tree> tree);

    [[nodiscard]] ContextOps::Ptr contextOps(const SceneItem::Ptr& item) override;

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
