#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/batchOpsHandler.h"
#include "kiv/hierarchy.h"
#include "kiv/host/childName.h"
#include "kiv/object3d.h"
#include "kiv/sceneItemOps.h"
#include "kiv/selection.h"

#include "shell/commands/editing.h"
#include "shell/engine/commandTable.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

using Items = std::vector<SceneItem::Ptr>;

Hierarchy::Ptr hierarchyOf(const SceneItem::Ptr& item)
{
    return required(Hierarchy::hierarchy(item), item, "has no hierarchy");
}

SceneItemOps::Ptr operationsOf(const SceneItem::Ptr& item)
{
    return required(SceneItemOps::sceneItemOps(item), item,
                    "its run-time offers no operations on items");
}

SceneItem::Ptr parentOf(const SceneItem::Ptr& item)
{
    return required(hierarchyOf(item)->parent(), item, "is the top of the scene");
}

auto isItem(const SceneItem::Ptr& wanted)
{
    return [path = wanted->path()](const SceneItem::Ptr& other) { return other->path() == path; };
}

/// Those of the items that do not lie under another of them.
Items topmost(const Items& items)
{
    Selection all;
    for (const auto& item : items) {
        all.append(item);
    }
    Items result;
    std::ranges::copy_if(items, std::back_inserter(result), [&](const SceneItem::Ptr& item) {
        return !all.containsAncestor(item->path());
    });
    return result;
}

void make(Session& session, const Arguments& arguments)
{
    const auto parent = arguments.size() > 2 ? session.item(arguments[2]) : session.current();
    const auto command =
        hierarchyOf(parent)->createChildCmd(arguments[0], host::freeName(parent, arguments[1]));
    edit("make " + arguments[1], parent, command);
    print(session, command->sceneItem());
}

void rename(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto parent = hierarchyOf(item)->parent();
    const auto command = operationsOf(item)->renameItemCmd(
        parent && item->nodeName() != arguments[1] ? host::freeName(parent, arguments[1])
                                                   : arguments[1]);
    edit("rename " + item->nodeName() + " " + arguments[1], item, command);
    print(session, command->sceneItem());
}

void mv(Session& session, const Arguments& arguments)
{
    const auto parent = session.item(arguments.words().back());
    auto words = arguments.words();
    words.pop_back();
    host::Transaction edits("mv to " + parent->nodeName());
    Items moved;
    for (const auto& named : topmost(session.items(words))) {
        moved.push_back(host::moveUnder(edits, named, parent, nullptr));
    }
    edits.commit();
    printAll(session, moved);
}

void rm(Session& session, const Arguments& arguments)
{
    const auto items = topmost(session.items(arguments.words()));
    host::Transaction edits("rm " + items.front()->nodeName());
    deselectUnder(session, edits, items);
    for (const auto& item : items) {
        run(edits, item, operationsOf(item)->deleteItemCmd());
    }
    edits.commit();
}

void cp(Session& session, const Arguments& arguments)
{
    const auto items = topmost(session.items(arguments.words()));
    Selection sources;
    for (const auto& item : items) {
        sources.append(item);
    }
    host::Transaction edits("cp " + items.front()->nodeName());
    const auto command = BatchOpsHandler::duplicateSelectionCmd(sources, {});
    run(edits, items.front(), command);
    const auto copies = std::dynamic_pointer_cast<SelectionUndoableCommand>(command);
    Items made;
    for (const auto& item : items) {
        const auto copy = copies ? copies->targetItem(item->path()) : nullptr;
        made.push_back(required(copy, item, "its run-time refuses to duplicate it"));
        for (const auto& mounting : session.scene().copyMountsCmds(item, made.back()->path())) {
            edits.run(mounting);
        }
    }
    edits.commit();
    printAll(session, made);
}

void group(Session& session, const Arguments& arguments)
{
    const auto items = session.items(arguments.from(1));
    const auto parent = parentOf(items.front());
    for (const auto& item : items) {
        if (parentOf(item)->path() != parent->path()) {
            fail(item, "is no sibling of " + textOf(items.front()));
        }
    }
    const auto command = hierarchyOf(parent)->createGroupCmd({items.begin(), items.end()},
                                                             host::freeName(parent, arguments[0]));
    edit("group " + arguments[0], parent, command);
    print(session, command->sceneItem());
}

void ungroup(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    host::Transaction edits("ungroup " + item->nodeName());
    deselectIf(session, edits, isItem(item));
    run(edits, item, hierarchyOf(item)->ungroupCmd());
    edits.commit();
}

/// The children of the parent that its run-time puts in order: where a file is mounted, those of
/// the other run-time stand behind them.
SceneItemList orderedChildren(const SceneItem::Ptr& parent)
{
    auto children = hierarchyOf(parent)->children();
    children.remove_if([&parent](const SceneItem::Ptr& child) {
        return child->runTimeId() != parent->runTimeId();
    });
    return children;
}

/// Where `siblings` have the item that is wanted as a neighbour of `item`.
SceneItemList::iterator neighbour(SceneItemList& siblings, const SceneItem::Ptr& wanted,
                                  const SceneItem::Ptr& item)
{
    if (isItem(item)(wanted)) {
        fail(item, "has no place beside itself");
    }
    if (wanted->runTimeId() != item->runTimeId()) {
        fail(wanted,
             "belongs to another run-time than " + textOf(item) + ", with which it has no order");
    }
    const auto at = std::ranges::find_if(siblings, isItem(wanted));
    if (at == siblings.end()) {
        fail(wanted, "is no sibling of " + textOf(item));
    }
    return at;
}

/// The siblings of `item`, itself at the place that the arguments name.
SceneItemList reordered(const Session& session, const SceneItem::Ptr& item,
                        const Arguments& arguments)
{
    auto siblings = orderedChildren(parentOf(item));
    siblings.remove_if(isItem(item));
    const auto& place = arguments[1];
    const auto isAtEnd = place == "first" || place == "last";
    const auto isBeside = place == "before" || place == "after";
    if (!(isAtEnd && arguments.size() == 2) && !(isBeside && arguments.size() == 3)) {
        throw std::runtime_error("a place is one of: first, last, before ITEM, after ITEM");
    }
    if (isAtEnd) {
        siblings.insert(place == "first" ? siblings.begin() : siblings.end(), item);
    } else {
        const auto at = neighbour(siblings, session.item(arguments[2]), item);
        siblings.insert(place == "after" ? std::next(at) : at, item);
    }
    return siblings;
}

void order(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto parent = parentOf(item);
    if (item->runTimeId() != parent->runTimeId()) {
        fail(item, "belongs to another run-time than " + textOf(parent) +
                       ", which puts in order its own children only");
    }
    edit("order " + item->nodeName(), parent,
         hierarchyOf(parent)->reorderCmd(reordered(session, item, arguments)));
}

void setVisibility(Session& session, const Arguments& arguments, bool visible)
{
    const auto items = session.items(arguments.words());
    host::Transaction edits(visible ? "unhide" : "hide");
    for (const auto& item : items) {
        const auto object = required(Object3d::object3d(item), item, "is nothing that can be seen");
        run(edits, item, object->setVisibilityCmd(visible));
    }
    edits.commit();
}

void hide(Session& session, const Arguments& arguments)
{
    setVisibility(session, arguments, false);
}

void unhide(Session& session, const Arguments& arguments)
{
    setVisibility(session, arguments, true);
}

constexpr Command kStructure[] = {
    {"make", "TYPE NAME [ITEM]", "Make an item, under the current one unless ITEM says where.",
     "make spotLight rim stage", make},
    {"rename", "ITEM NAME", "Give an item another name.", "rename props/crate 'big crate'", rename},
    {"mv", "ITEM... ITEM", "Move items under the last one named.", "mv props/crate props/box stage",
     mv},
    {"rm", "ITEM...", "Delete items with all that is under them.", "rm props/crate", rm},
    {"cp", "ITEM...", "Duplicate items.", "cp props", cp},
    {"group", "NAME ITEM...", "Put siblings under a new group.", "group pair props/crate props/box",
     group},
    {"ungroup", "ITEM", "Put the children of a group into its place.", "ungroup props", ungroup},
    {"order", "ITEM first|last|before|after [ITEM]", "Move an item among its siblings.",
     "order props before stage", order},
    {"hide", "ITEM...", "Set items not to be shown.", "hide props/*", hide},
    {"unhide", "ITEM...", "Set items to be shown.", "unhide props/*", unhide},
};

} // namespace

CommandKind structure()
{
    return {"Structure", kStructure};
}

} // namespace app::shell
