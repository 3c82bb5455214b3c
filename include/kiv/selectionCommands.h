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
// change that finds the selection in the wanted state already is silent. When an item no longer
// exists, or the command was made without a selection, `std::invalid_argument` is thrown and, by
// the commands that rebuild a selection, nothing is changed.
//
// `createAndExecute` makes a command, executes it and gives it back; an exception from the
// execution passes through.

/// Appends an item.
class KIV_EXPORT SelectionAppendItem : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionAppendItem>;

    SelectionAppendItem(const ObservableSelection::Ptr& selection, const SceneItem::Ptr& item);
    ~SelectionAppendItem() override;

    /// Makes the command, executes it and gives it back.
    static Ptr createAndExecute(const ObservableSelection::Ptr& selection,
                                const SceneItem::Ptr& item);

    void undo() override;
    void redo() override;

private:
    const ObservableSelection::Ptr _selection;
    const Path _path;
};

/// Removes an item. Undoing appends it at the end, not at its former place.
class KIV_EXPORT SelectionRemoveItem : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionRemoveItem>;

    SelectionRemoveItem(const ObservableSelection::Ptr& selection, const SceneItem::Ptr& item);
    ~SelectionRemoveItem() override;

    /// Makes the command, executes it and gives it back.
    static Ptr createAndExecute(const ObservableSelection::Ptr& selection,
                                const SceneItem::Ptr& item);

    void undo() override;
    void redo() override;

private:
    const ObservableSelection::Ptr _selection;
    const Path _path;
};

/// Clears a selection. Undoing gives back what it held when the command was made.
class KIV_EXPORT SelectionClear : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionClear>;

    explicit SelectionClear(const ObservableSelection::Ptr& selection);
    ~SelectionClear() override;

    /// Makes the command, executes it and gives it back.
    static Ptr createAndExecute(const ObservableSelection::Ptr& selection);

    void undo() override;
    void redo() override;

private:
    const ObservableSelection::Ptr _selection;
    const std::list<Path> _paths;
};

/// Replaces what a selection holds. Undoing gives back what it held when the command was made.
class KIV_EXPORT SelectionReplaceWith : public UndoableCommand
{
public:
    using Ptr = std::shared_ptr<SelectionReplaceWith>;

    SelectionReplaceWith(const ObservableSelection::Ptr& selection, const Selection& replacement);
    ~SelectionReplaceWith() override;

    /// Makes the command, executes it and gives it back.
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
