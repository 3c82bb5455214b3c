#pragma once

#include <memory>
#include <string>
#include <utility>

#include "kiv/export.h"
#include "kiv/resultCommands.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// The result of duplicating an item.
struct Duplicate
{
    Duplicate() = default;
    Duplicate(SceneItem::Ptr copy, UndoableCommand::Ptr command)
        : item(std::move(copy)), undoableCommand(std::move(command))
    {}

    SceneItem::Ptr item;                  ///< The copy.
    UndoableCommand::Ptr undoableCommand; ///< The executed command, for the undo history.
};

/// The result of renaming an item.
struct Rename
{
    Rename() = default;
    Rename(SceneItem::Ptr renamed, UndoableCommand::Ptr command)
        : item(std::move(renamed)), undoableCommand(std::move(command))
    {}

    SceneItem::Ptr item;                  ///< The item under its new name.
    UndoableCommand::Ptr undoableCommand; ///< The executed command, for the undo history.
};

/// The operations on one item as a whole: delete, duplicate, rename.
///
/// Each operation has a command maker, which changes nothing and returns null if the run-time
/// refuses, and a convenience that executes the command.
class KIV_EXPORT SceneItemOps
{
public:
    using Ptr = std::shared_ptr<SceneItemOps>;

    /// The operations of `item`; null for a null item, an empty path, a run-time without this
    /// interface, and an item without it. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr sceneItemOps(const SceneItem::Ptr& item);

    SceneItemOps();
    SceneItemOps(const SceneItemOps&) = delete;
    SceneItemOps& operator=(const SceneItemOps&) = delete;
    virtual ~SceneItemOps();

    /// Sets the item that the operations work on, so that one object serves many items.
    virtual void setItem(const SceneItem::Ptr& item) = 0;
    /// The item that is set; null if there is none.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;
    /// Its path; empty if there is none.
    [[nodiscard]] virtual Path path() const = 0;

    /// Returns a command that deletes the item with its descendants.
    [[nodiscard]] virtual UndoableCommand::Ptr deleteItemCmd() = 0;

    /// Executes `deleteItemCmd()` and drops it. Returns false if the run-time refuses.
    virtual bool deleteItem() = 0;

    /// Returns a command that copies the item with its descendants; the copy follows the last
    /// sibling. Its name is the item's, changed to be unique.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr duplicateItemCmd() = 0;

    /// Executes `duplicateItemCmd()`. Both fields are null if the run-time refuses.
    virtual Duplicate duplicateItem() = 0;

    /// The name that the item gets when it is renamed to `name`: changed if that is needed to make
    /// it unique among the siblings or fit the run-time's rules; null if the item cannot be
    /// renamed.
    [[nodiscard]] virtual PathComponent validName(const PathComponent& name) const = 0;

    /// Returns a command that gives the item the name `validName(newName)`.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr
    renameItemCmd(const PathComponent& newName) = 0;

    /// Executes `renameItemCmd(newName)`. Both fields are null if the run-time refuses.
    virtual Rename renameItem(const PathComponent& newName) = 0;
};

} // namespace Kiv_v4

#include "kiv/sceneItemOpsHandler.h" // for code that knows this header alone
