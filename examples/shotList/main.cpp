// Works on a shot list as a host does: through the library, without code for shots.
#include <iostream>

#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"

#include "runTime.h"

namespace {

std::string text(const Kiv::Path& path)
{
    return Kiv::PathString::string(path);
}

/// Prints what the scene and the attributes announce.
class Printer : public Kiv::Observer
{
public:
    void operator()(const Kiv::Notification& notification) override
    {
        if (const auto* added = dynamic_cast<const Kiv::ObjectAdd*>(&notification)) {
            std::cout << "  added " << text(added->item()->path()) << '\n';
        } else if (const auto* renamed = dynamic_cast<const Kiv::ObjectRename*>(&notification)) {
            std::cout << "  renamed " << text(renamed->previousPath()) << " to "
                      << renamed->item()->nodeName() << '\n';
        } else if (const auto* removed = dynamic_cast<const Kiv::ObjectDelete*>(&notification)) {
            std::cout << "  removed " << text(removed->path()) << '\n';
        } else if (const auto* all = dynamic_cast<const Kiv::SubtreeInvalidate*>(&notification)) {
            std::cout << "  ask anew " << text(all->root()->path()) << '\n';
        } else if (const auto* set = dynamic_cast<const Kiv::AttributeChanged*>(&notification)) {
            std::cout << "  set " << set->name() << " of " << text(set->path()) << '\n';
        }
    }
};

void execute(const Kiv::UndoableCommand::Ptr& command)
{
    if (!command) {
        std::cout << "refused\n";
        return;
    }
    std::cout << command->commandString() << '\n';
    Kiv::UndoableCommandMgr::instance().executeCmd(command);
}

void printTree(const Kiv::SceneItem::Ptr& item, const std::string& indentation = "")
{
    std::cout << indentation << item->nodeName();
    if (const auto attributes = Kiv::Attributes::attributes(item)) {
        for (const auto& name : attributes->attributeNames()) {
            std::cout << ' ' << attributes->attribute(name)->string();
        }
    }
    std::cout << '\n';
    for (const auto& child : Kiv::Hierarchy::hierarchy(item)->children()) {
        printTree(child, indentation + "  ");
    }
}

Kiv::SceneItem::Ptr item(const std::string& pathText)
{
    return Kiv::Hierarchy::createItem(Kiv::PathString::path(pathText));
}

} // namespace

int main()
{
    Kiv::Scene::initializeInstance(std::make_shared<Kiv::Scene>());
    const auto history = std::make_shared<Kiv::host::UndoHistory>();
    Kiv::UndoableCommandMgr::initializeInstance(history);
    const auto printer = std::make_shared<Printer>();
    Kiv::Scene::instance().addObserver(printer);
    Kiv::Attributes::addObserver(printer);

    Entry show{"pilot", "show", 0, 0, {}};
    show.children.push_back({"sq010", "sequence", 0, 0, {}});
    show.children.back().children.push_back({"sh010", "shot", 1001, 1048, {}});
    {
        ShotListRunTime shots(show);
        const auto sequence = Kiv::Hierarchy::hierarchy(item("|pilot|sq010"));
        execute(sequence->createChildCmd("shot", std::string("sh010")));
        execute(sequence->createChildCmd("camera", std::string("close")));
        const auto ops = Kiv::SceneItemOps::sceneItemOps(item("|pilot|sq010|sh010"));
        execute(ops->renameItemCmd(std::string("sh|005")));
        execute(ops->renameItemCmd(std::string("gone"))); // its item is out of date
        const auto first = item("|pilot|sq010|sh_005");
        const auto frame = Kiv::Attributes::attributes(first)->attribute("lastFrame");
        std::dynamic_pointer_cast<Kiv::AttributeInt>(frame)->set(1100); // not undoable
        auto turned = sequence->children();
        turned.reverse();
        execute(sequence->reorderCmd(turned));
        execute(Kiv::SceneItemOps::sceneItemOps(first)->duplicateItemCmd());
        std::cout << '\n';
        execute(Kiv::SceneItemOps::sceneItemOps(first)->deleteItemCmd());
        printTree(item("|pilot"));

        std::cout << "undo all\n";
        while (history->undo()) {
        }
        printTree(item("|pilot"));
        std::cout << "redo all\n";
        while (history->redo()) {
        }
        printTree(item("|pilot"));

        std::cout << "reload\n";
        shots.reload({});
        printTree(item("|pilot"));
    }
    history->clear();
    Kiv::UndoableCommandMgr::initializeInstance(nullptr);
    Kiv::Scene::initializeInstance(nullptr);
}
