// The set-up of a host, and the work of its panels.
#include <cstddef>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <unordered_set>

#include "kiv/host/transaction.h"
#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"

namespace {

/// Keeps a row for each item of the scene.
class Outliner : public Kiv::Observer
{
public:
    void operator()(const Kiv::Notification& notification) override
    {
        if (const auto* all = dynamic_cast<const Kiv::SceneCompositeNotification*>(&notification)) {
            std::cout << "outliner: " << all->size() << " changes at once\n";
            for (const auto& op : *all) {
                update(op);
            }
        } else if (const auto* one = dynamic_cast<const Kiv::SceneChanged*>(&notification)) {
            update(Kiv::SceneCompositeNotification::Op(*one));
        }
    }

private:
    /// A single change, and each change of a batch.
    void update(const Kiv::SceneCompositeNotification::Op& op)
    {
        switch (op.opType) {
        case Kiv::SceneChanged::Added:
            add(op.path);
            break;
        case Kiv::SceneChanged::Deleted: // possibly announced twice
            drop(op.path);
            break;
        case Kiv::SceneChanged::PathChanged: // a rename, a move, an added or a removed path
            if (op.subOpType != Kiv::ObjectPathChange::PathAdded) {
                drop(op.path);
            }
            if (op.item) {
                add(op.item->path());
            }
            break;
        default: // the subtree must be queried again
            drop(op.path);
            add(op.path);
        }
    }

    /// Adds rows for the item at the path and its descendants; none if a later change removed it.
    void add(const Kiv::Path& path)
    {
        if (const auto item = Kiv::Hierarchy::createItem(path)) {
            if (_rows.insert(path).second) {
                std::cout << "outliner: + " << Kiv::PathString::string(path) << '\n';
            }
            for (const auto& child : Kiv::Hierarchy::hierarchy(item)->children()) {
                add(child->path());
            }
        }
    }

    void drop(const Kiv::Path& path)
    {
        std::size_t dropped = 0;
        for (auto row = _rows.begin(); row != _rows.end();) {
            const auto goes = row->isAtOrBelow(path);
            row = goes ? _rows.erase(row) : std::next(row);
            dropped += goes ? 1 : 0;
        }
        if (dropped != 0) {
            std::cout << "outliner: - " << Kiv::PathString::string(path) << ", rows: " << dropped
                      << '\n';
        }
    }

    std::unordered_set<Kiv::Path> _rows;
};

/// Shows the selection.
class Panel : public Kiv::Observer
{
public:
    void operator()(const Kiv::Notification& /*notification*/) override
    {
        std::cout << "panel:";
        for (const auto& item : *Kiv::GlobalSelection::get()) {
            std::cout << ' ' << item->nodeName();
        }
        std::cout << '\n';
    }
};

/// Prints that one item moved, wherever it is.
class MoveReport : public Kiv::Observer
{
public:
    void operator()(const Kiv::Notification& /*notification*/) override
    {
        std::cout << "viewport: it moved\n";
    }
};

/// The way in which every tool executes a command.
bool execute(const Kiv::UndoableCommand::Ptr& command)
{
    if (command) { // null: the run-time refuses
        Kiv::UndoableCommandMgr::instance().executeCmd(command);
    }
    return command != nullptr;
}

void printHistory(const Kiv::host::UndoHistory& history)
{
    std::cout << "history:";
    for (const auto& entry : history.entries()) {
        std::cout << " [" << entry << ']';
    }
    std::cout << " done: " << history.nbDone() << '\n';
}

} // namespace

int main()
{
    // At start-up, once, before run-times are registered.
    const auto history = std::make_shared<Kiv::host::UndoHistory>();
    Kiv::Scene::initializeInstance(std::make_shared<Kiv::Scene>());
    Kiv::UndoableCommandMgr::initializeInstance(history);
    Kiv::GlobalSelection::initializeInstance(std::make_shared<Kiv::ObservableSelection>());

    auto runTime = std::make_unique<Kiv::memory::RunTime>();
    const auto root = runTime->model().item(runTime->model().root());

    // Observers live as long as their owners keep them.
    const auto outliner = std::make_shared<Outliner>();
    Kiv::Scene::instance().addObserver(outliner);
    const auto panel = std::make_shared<Panel>();
    Kiv::GlobalSelection::get()->addObserver(panel);

    // An edit: get the interface, make the command, execute it through the manager.
    const auto add = Kiv::Hierarchy::hierarchy(root)->createChildCmd("mesh", std::string("cube"));
    execute(add);
    const auto cube = add->sceneItem();

    std::cout << '\n';

    // Several edits, one entry.
    {
        const Kiv::UndoableCommandGuard step("Set the table");
        const Kiv::NotificationGuard batch(Kiv::Scene::instance());
        const auto hierarchy = Kiv::Hierarchy::hierarchy(root);
        execute(hierarchy->createChildCmd("mesh", std::string("cup")));
        execute(hierarchy->createChildCmd("mesh", std::string("plate")));
        Kiv::UndoableCommandGuard::setSuccess();
    }
    printHistory(*history);
    std::cout << '\n';

    // All or nothing: without commit, the commands are undone.
    {
        Kiv::host::Transaction edits("Clear the table");
        for (const auto* name : {"cup", "plate"}) {
            const auto item = Kiv::Hierarchy::createItem(root->path() + std::string(name));
            edits.run(Kiv::SceneItemOps::sceneItemOps(item)->deleteItemCmd());
        }
        edits.commit();
    }
    history->undo();

    // A rename includes the item's descendants.
    const auto group = Kiv::Hierarchy::hierarchy(root)->createGroupCmd({cube}, std::string("dice"));
    execute(group);
    execute(
        Kiv::SceneItemOps::sceneItemOps(group->sceneItem())->renameItemCmd(std::string("game")));
    history->undo();
    history->undo();

    // Drag: one command, set again and again.
    Kiv::Transform3dPathSubject cubeInTheWorld(cube->path());
    const auto report = std::make_shared<MoveReport>();
    cubeInTheWorld.addObserver(report);
    const auto drag = std::dynamic_pointer_cast<Kiv::SetDouble3UndoableCommand>(
        Kiv::Transform3d::transform3d(cube)->translateCmd(1, 0, 0));
    execute(drag);
    drag->set(2, 0, 0);
    drag->set(3, 0, 0);
    history->undo();
    history->redo();

    // A click. The selection commands are undoable as all others.
    const auto selection = Kiv::GlobalSelection::get();
    execute(std::make_shared<Kiv::SelectionAppendItem>(selection, cube));
    execute(std::make_shared<Kiv::SelectionClear>(selection));
    history->undo();

    // Many changes, one notification.
    {
        const Kiv::NotificationGuard batch(*selection);
        for (const auto& child : Kiv::Hierarchy::hierarchy(root)->children()) {
            selection->append(child); // false for the cube: it is selected
        }
    }
    std::cout << "below the root: " << selection->containsDescendant(root->path()) << '\n';

    // A selection that a tool leaves for the next one.
    *Kiv::NamedSelection::get("myPlugIn.lastPicked") = *selection;
    std::cout << "kept: " << Kiv::NamedSelection::get("myPlugIn.lastPicked")->size() << '\n';

    while (history->undo()) {
    }

    // At the end, before the run-times are unregistered: release everything that belongs to them.
    Kiv::NamedSelection::remove("myPlugIn.lastPicked");
    selection->clear();
    history->clear();
    runTime.reset();

    // Then clear the host's own objects.
    Kiv::GlobalSelection::initializeInstance(nullptr);
    Kiv::UndoableCommandMgr::initializeInstance(nullptr);
    Kiv::Scene::initializeInstance(nullptr);
}
