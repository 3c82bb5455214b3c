#pragma once

#include <memory>

#include "kiv/sceneItemOps.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

class MemorySceneItemOps : public SceneItemOps
{
public:
    MemorySceneItemOps(std::shared_ptr<Tree> tree, SceneItem::Ptr item);

    void setItem(const SceneItem::Ptr& item) override;
    [[nodiscard]] SceneItem::Ptr sceneItem() const override;
    [[nodiscard]] Path path() const override;
    [[nodiscard]] UndoableCommand::Ptr deleteItemCmd() override;
    bool deleteItem() override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr duplicateItemCmd() override;
    Duplicate duplicateItem() override;
    [[nodiscard]] PathComponent validName(const PathComponent& name) const override;
    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    renameItemCmd(const PathComponent& newName) override;
    Rename renameItem(const PathComponent& newName) override;

private:
    const std::shared_ptr<Tree> _tree;
    SceneItem::Ptr _item;
};

class MemorySceneItemOpsHandler : public SceneItemOpsHandler
{
public:
    explicit MemorySceneItemOpsHandler(std::shared_ptr<Tree> tree);

    [[nodiscard]] SceneItemOps::Ptr sceneItemOps(const SceneItem::Ptr& item) override;

private:
    const std::shared_ptr<Tree> _tree;
};

} // namespace Kiv_v4::memory
