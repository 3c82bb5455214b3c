#pragma once

#include <list>
#include <memory>

#include "kiv/export.h"
#include "kiv/observableSelection.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

// Undoable changes of an observable selection.
//
// The commands remember paths and make the items again each time they run, so they outlive the item
// objects. Each change goes through the selection's public operations and notifies its observers. A
// command notifies nobody if the selection is already in the wanted state. A command throws
// `std::invalid_argument` if an item no longer exists or its selection is null; the commands that
// rebuild a selection then change nothing.
//
// `createAndExecute` makes a command, executes it and returns it; an exception from the execution
// passes through.

/// Appends an item.
class KIV_EXPORT SelectionAppendItem : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionAppendItem>;

    SelectionAppendItem(const ObservableSelection::Ptr& selection, const SceneItem::Ptr& item);
    ~SelectionAppendItem() override;

    /// Makes the command, executes it and returns it.
    static Ptr createAndExecute(const ObservableSelection::Ptr& selection,
                                const SceneItem::Ptr& item);

    void undo() override;
    void redo() override;

private:
    const ObservableSelection::Ptr _selection;
    const Path _path;
};

/// Removes an item. Undo appends it at the end, not at its former place.
class KIV_EXPORT SelectionRemoveItem : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionRemoveItem>;

    SelectionRemoveItem(const ObservableSelection::Ptr& selection, const SceneItem::Ptr& item);
    ~SelectionRemoveItem() override;

    /// Makes the command, executes it and returns it.
    static Ptr createAndExecute(const ObservableSelection::Ptr& selection,
                                const SceneItem::Ptr& item);

    void undo() override;
    void redo() override;

private:
    const ObservableSelection::Ptr _selection;
    const Path _path;
};

/// Clears a selection. Undo restores the items that it held when the command was made.
class KIV_EXPORT SelectionClear : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionClear>;

    explicit SelectionClear(const ObservableSelection::Ptr& selection);
    ~SelectionClear() override;

    /// Makes the command, executes it and returns it.
    static Ptr createAndExecute(const ObservableSelection::Ptr& selection);

    void undo() override;
    void redo() override;

private:
    const ObservableSelection::Ptr _selection;
    const std::list<Path> _paths;
};

/// Replaces the items of a selection. Undo restores the items that it held when the command was
/// made.
class KIV_EXPORT SelectionReplaceWith : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionReplaceWith>;

    SelectionReplaceWith(const ObservableSelection::Ptr& selection, const Selection& replacement);
    ~SelectionReplaceWith() override;

    /// Makes the command, executes it and returns it.
    static Ptr createAndExecute(const ObservableSelection::Ptr& selection,
                                const Selection& replacement);

    void undo() override;
    void redo() override;

private:
    const ObservableSelection::Ptr _selection;
    const std::list<Path> _oldPaths;
    const std::list<Path> _newPaths;
};

} // namespace Kiv_v4
