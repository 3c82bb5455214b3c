#include <memory>
#include <stdexcept>
#include <string>

#include "kiv/selectionCommands.h"

#include "shell/commands/editing.h"
#include "shell/engine/commandTable.h"
#include "terminal/interrupts.h"
#include "terminal/terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

void select(Session& session, const Arguments& arguments)
{
    host::Transaction edits("select");
    for (const auto& item : session.itemsIfAny(arguments.words())) {
        endIfInterrupted();
        if (!session.selection()->contains(item->path())) {
            edits.run(std::make_shared<SelectionAppendItem>(session.selection(), item));
        }
    }
    edits.commit();
}

void deselect(Session& session, const Arguments& arguments)
{
    Selection going;
    for (const auto& item : session.itemsIfAny(arguments.words())) {
        going.append(item);
    }
    host::Transaction edits("deselect");
    if (arguments.size() == 0 && !session.selection()->empty()) {
        edits.run(std::make_shared<SelectionClear>(session.selection()));
    }
    deselectIf(session, edits,
               [&going](const SceneItem::Ptr& item) { return going.contains(item->path()); });
    edits.commit();
}

void list(Session& session)
{
    for (const auto& name : session.selectionNames()) {
        const auto size = session.itemsIfAny(Words{"@" + name}).size();
        session.output().line("@" + printable(name) + "  " + std::to_string(size) +
                              (size == 1 ? " item" : " items"));
    }
}

/// Selects what the named selection holds.
void recall(Session& session, const std::string& name)
{
    Selection items;
    for (const auto& item : session.itemsIfAny(Words{"@" + name})) {
        items.append(item);
    }
    host::Transaction edits("selection recall " + name);
    edits.run(std::make_shared<SelectionReplaceWith>(session.selection(), items));
    edits.commit();
}

void selection(Session& session, const Arguments& arguments)
{
    if (arguments.size() == 0) {
        return printAll(session, *session.selection());
    }
    const auto& verb = arguments[0];
    if (verb == "list") {
        if (arguments.size() > 1) {
            throw std::runtime_error("'selection list' takes no name, so not '" + arguments[1] +
                                     "'");
        }
        return list(session);
    }
    if (arguments.size() < 2) {
        throw std::runtime_error("'selection " + verb +
                                 "' wants a name: show, store, recall or drop NAME");
    }
    const auto& name = arguments[1];
    if (verb == "show") {
        printAll(session, session.itemsIfAny(Words{"@" + name}));
    } else if (verb == "store") {
        session.namedSelection(name).replaceWith(*session.selection());
    } else if (verb == "recall") {
        recall(session, name);
    } else if (verb == "drop") {
        session.dropSelection(name);
    } else {
        throw std::runtime_error("'" + verb + "' is none of list, show, store, recall and drop");
    }
}

constexpr Command kSelecting[] = {
    {"select", "ITEM...", "Add items to the selection.", "select **/Leg*", select},
    {"deselect", "[ITEM...]", "Take items out of the selection; all without ITEM.",
     "deselect props/crate", deselect},
    {"selection", "[list|show|store|recall|drop] [SELECTION]",
     "Print the selection, or work with named ones, which are called @NAME.",
     "selection store legs", selection},
};

} // namespace

CommandKind selecting()
{
    return {"Selecting; @ stands for the selected items", kSelecting};
}

} // namespace app::shell
