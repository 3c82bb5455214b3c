#include "memorySceneItemOps.h"

#include <utility>

#include "editCommands.h"

namespace Kiv_v4::memory {

namespace {

/// Executes a command with an item as its result and returns both; nothing if there is no command,
/// or if an observer removed the item at once.
template <class Result>
Result executed(const SceneItemResultUndoableCommand::Ptr& command)
{
    if (!command) {
        return {};
    }
    command->execute();
    const auto item = command->sceneItem();
    return item ? Result(item, command) : Result();
}

} // namespace

MemorySceneItemOps::MemorySceneItemOps(std::shared_ptr<Tree> tree, SceneItem::Ptr item)
    : _tree(std::move(tree)), _item(std::move(item))
{}

void MemorySceneItemOps::setItem(const SceneItem::Ptr& item)
{
    _item = item;
}

SceneItem::Ptr MemorySceneItemOps::sceneItem() const
{
    return _item;
}

Path MemorySceneItemOps::path() const
{
    return _item ? _item->path() : Path();
}

UndoableCommand::Ptr MemorySceneItemOps::deleteItemCmd()
{
    return memory::deleteItemCmd(_tree, path());
}

bool MemorySceneItemOps::deleteItem()
{
    const auto command = deleteItemCmd();
    if (command) {
        command->execute();
    }
    return command != nullptr;
}

SceneItemResultUndoableCommand::Ptr MemorySceneItemOps::duplicateItemCmd()
{
    return memory::duplicateItemCmd(_tree, path());
}

Duplicate MemorySceneItemOps::duplicateItem()
{
    return executed<Duplicate>(duplicateItemCmd());
}

PathComponent MemorySceneItemOps::validName(const PathComponent& name) const
{
    return validNameFor(*_tree, path(), name);
}

SceneItemResultUndoableCommand::Ptr MemorySceneItemOps::renameItemCmd(const PathComponent& newName)
{
    return memory::renameItemCmd(_tree, path(), newName);
}

Rename MemorySceneItemOps::renameItem(const PathComponent& newName)
{
    return executed<Rename>(renameItemCmd(newName));
}

MemorySceneItemOpsHandler::MemorySceneItemOpsHandler(std::shared_ptr<Tree> tree)
    : _tree(std::move(tree))
{}

SceneItemOps::Ptr MemorySceneItemOpsHandler::sceneItemOps(const SceneItem::Ptr& item)
{
    return std::make_shared<MemorySceneItemOps>(_tree, item);
}

} // namespace Kiv_v4::memory
