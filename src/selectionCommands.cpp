#include "kiv/selectionCommands.h"

#include <stdexcept>

#include "kiv/hierarchy.h"

namespace Kiv_v4 {

namespace {

/// The selection itself rejects a null item when the command runs.
Path pathOf(const SceneItem::Ptr& item)
{
    return item ? item->path() : Path();
}

std::list<Path> toPaths(const Selection& selection)
{
    std::list<Path> paths;
    for (const auto& item : selection) {
        paths.push_back(item->path());
    }
    return paths;
}

std::list<Path> toPaths(const ObservableSelection::Ptr& selection)
{
    return selection ? toPaths(*selection) : std::list<Path>();
}

/// The selection that a command runs on.
ObservableSelection& target(const ObservableSelection::Ptr& selection)
{
    if (!selection) {
        throw std::invalid_argument("Cannot change a null selection.");
    }
    return *selection;
}

Selection toSelection(const std::list<Path>& paths)
{
    Selection selection;
    for (const auto& path : paths) {
        selection.append(Hierarchy::createItem(path));
    }
    return selection;
}

template <class Command, class... Arguments>
std::shared_ptr<Command> executedNew(const Arguments&... arguments)
{
    auto command = std::make_shared<Command>(arguments...);
    command->execute();
    return command;
}

} // namespace

SelectionAppendItem::SelectionAppendItem(const ObservableSelection::Ptr& selection,
                                         const SceneItem::Ptr& item)
    : _selection(selection), _path(pathOf(item))
{}

SelectionAppendItem::~SelectionAppendItem() = default;

SelectionAppendItem::Ptr
SelectionAppendItem::createAndExecute(const ObservableSelection::Ptr& selection,
                                      const SceneItem::Ptr& item)
{
    return executedNew<SelectionAppendItem>(selection, item);
}

void SelectionAppendItem::undo()
{
    target(_selection).remove(Hierarchy::createItem(_path));
}

void SelectionAppendItem::redo()
{
    target(_selection).append(Hierarchy::createItem(_path));
}

SelectionRemoveItem::SelectionRemoveItem(const ObservableSelection::Ptr& selection,
                                         const SceneItem::Ptr& item)
    : _selection(selection), _path(pathOf(item))
{}

SelectionRemoveItem::~SelectionRemoveItem() = default;

SelectionRemoveItem::Ptr
SelectionRemoveItem::createAndExecute(const ObservableSelection::Ptr& selection,
                                      const SceneItem::Ptr& item)
{
    return executedNew<SelectionRemoveItem>(selection, item);
}

void SelectionRemoveItem::undo()
{
    target(_selection).append(Hierarchy::createItem(_path));
}

void SelectionRemoveItem::redo()
{
    target(_selection).remove(Hierarchy::createItem(_path));
}

SelectionClear::SelectionClear(const ObservableSelection::Ptr& selection)
    : _selection(selection), _paths(toPaths(selection))
{}

SelectionClear::~SelectionClear() = default;

SelectionClear::Ptr SelectionClear::createAndExecute(const ObservableSelection::Ptr& selection)
{
    return executedNew<SelectionClear>(selection);
}

void SelectionClear::undo()
{
    target(_selection).replaceWith(toSelection(_paths));
}

void SelectionClear::redo()
{
    target(_selection).clear();
}

SelectionReplaceWith::SelectionReplaceWith(const ObservableSelection::Ptr& selection,
                                           const Selection& replacement)
    : _selection(selection), _oldPaths(toPaths(selection)), _newPaths(toPaths(replacement))
{}

SelectionReplaceWith::~SelectionReplaceWith() = default;

SelectionReplaceWith::Ptr
SelectionReplaceWith::createAndExecute(const ObservableSelection::Ptr& selection,
                                       const Selection& replacement)
{
    return executedNew<SelectionReplaceWith>(selection, replacement);
}

void SelectionReplaceWith::undo()
{
    target(_selection).replaceWith(toSelection(_oldPaths));
}

void SelectionReplaceWith::redo()
{
    target(_selection).replaceWith(toSelection(_newPaths));
}

} // namespace Kiv_v4
