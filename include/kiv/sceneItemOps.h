#pragma once

#include <memory>
#include <string>
#include <utility>

#include "kiv/export.h"
#include "kiv/resultCommands.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// What duplicating an item gives.
struct Duplicate
{
    Duplicate() = default;
    Duplicate(SceneItem::Ptr copy, UndoableCommand::Ptr command)
        : item(std::move(copy)), undoableCommand(std::move(command))
    {}

    SceneItem::Ptr item;                  ///< The copy.
    UndoableCommand::Ptr undoableCommand; ///< What made it, executed, for the host's undo stack.
};

/// What renaming an item gives.
struct Rename
{
    Rename() = default;
    Rename(SceneItem::Ptr renamed, UndoableCommand::Ptr command)
        : item(std::move(renamed)), undoableCommand(std::move(command))
    {}

    SceneItem::Ptr item;                  ///< The item under its new name.
    UndoableCommand::Ptr undoableCommand; ///< What renamed it, executed, for the host's undo stack.
};

/// The operations on one item as a whole: delete, duplicate, rename.
///
/// Each comes as a command maker, which changes nothing and gives null when the run-time refuses,
/// and as a convenience that executes the command.
class KIV_EXPORT SceneItemOps
{
public:
    using Ptr = std::shared_ptr<SceneItemOps>;

    /// The operations of `item`; null for a null item, an empty path, a run-time that offers
    /// none, and an item that has none. Exceptions of the run-time are logged and pass through.
    [[nodiscard]] static Ptr sceneItemOps(const SceneItem::Ptr& item);

    SceneItemOps();
    SceneItemOps(const SceneItemOps&) = delete;
    SceneItemOps& operator=(const SceneItemOps&) = delete;
    virtual ~SceneItemOps();

    /// Chooses the item that the operations work on, so that one object serves many items.
    virtual void setItem(const SceneItem::Ptr& item) = 0;
    /// The item chosen; null when there is none.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;
    /// Its path; empty when there is none.
    [[nodiscard]] virtual Path path() const = 0;

    /// Deletes the item with all that is under it.
    [[nodiscard]] virtual UndoableCommand::Ptr deleteItemCmd() = 0;

    /// Executes `deleteItemCmd()` and drops it; false when the run-time refuses.
    virtual bool deleteItem() = 0;

    /// Copies the item with all that is under it; the copy follows the last sibling. Its name is
    /// the item's, changed to be unique.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr duplicateItemCmd() = 0;

    /// Executes `duplicateItemCmd()`; both fields are null when the run-time refuses.
    virtual Duplicate duplicateItem() = 0;

    /// What `name` becomes when the item is renamed to it: changed where it must be, to be unique
    /// among the siblings and to fit the run-time's rules; null when the item cannot be renamed.
    [[nodiscard]] virtual PathComponent validName(const PathComponent& name) const = 0;

    /// Gives the item the name `validName(newName)`.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr
    renameItemCmd(const PathComponent& newName) = 0;

    /// Executes `renameItemCmd(newName)`; both fields are null when the run-time refuses.
    virtual Rename renameItem(const PathComponent& newName) = 0;
};

} // namespace Kiv_v4

#include "kiv/sceneItemOpsHandler.h" // for code that knows this header alone
