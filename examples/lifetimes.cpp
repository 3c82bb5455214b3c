// Owners, lifetimes, and the rules in the middle of a notification.
#include <iostream>
#include <memory>

#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"

namespace {

std::string text(const Kiv::Path& path)
{
    return path.empty() ? "nowhere" : Kiv::PathString::string(path);
}

/// An item does not follow its object.
void itemsAndPaths(const Kiv::SceneItem::Ptr& lamp)
{
    const Kiv::PathSubject follower(
        lamp->path(), [](const Kiv::SceneItem::Ptr&, const Kiv::Observer::Ptr&) { return true; },
        [](const Kiv::Path&, const Kiv::Observer::Ptr&) { return true; });

    const auto renamed = Kiv::SceneItemOps::sceneItemOps(lamp)->renameItem(std::string("bulb"));
    std::cout << "old item: " << text(lamp->path()) << '\n';
    std::cout << "new item: " << text(renamed.item->path()) << '\n';
    std::cout << "follower: " << text(follower.path()) << '\n';
    const auto atOldPath = Kiv::Hierarchy::createItem(lamp->path());
    std::cout << "at the old path: " << (atOldPath ? "one" : "none") << '\n';

    Kiv::SceneItemOps::sceneItemOps(renamed.item)->deleteItem();
    std::cout << "\nfollower after the deletion: " << text(follower.path()) << '\n';
}

/// Commands and handles name things by path, so they work on an item that was made again.
void namesOutliveItems(const Kiv::SceneItem::Ptr& chair)
{
    const auto size =
        Kiv::Attributes::attributes(chair)->addAttribute(Kiv::Attribute::kFloat, "size");
    const Kiv::AttributeInfo handle(size);

    const auto removal = Kiv::SceneItemOps::sceneItemOps(chair)->deleteItemCmd();
    removal->execute();
    try {
        (void)handle.attribute();
    } catch (const std::runtime_error& error) {
        std::cout << "while it is gone: " << error.what() << '\n';
    }
    removal->undo();
    std::cout << "when it is back: " << handle.attribute()->name() << '\n';
}

/// Receives one notification, then releases itself.
class OnlyOnce : public Kiv::Observer
{
public:
    explicit OnlyOnce(Kiv::Observer::Ptr& owner) : _owner(owner) {}

    void operator()(const Kiv::Notification& /*notification*/) override { _owner.reset(); }

private:
    Kiv::Observer::Ptr& _owner;
};

void leavingWhileBeingTold(Kiv::memory::DataModel& model)
{
    Kiv::Observer::Ptr listener;
    listener = std::make_shared<OnlyOnce>(listener);
    Kiv::Scene::instance().addObserver(listener);
    std::cout << "observers: " << Kiv::Scene::instance().nbObservers() << '\n';
    model.make(model.root(), "group", "news");
    std::cout << "observers: " << Kiv::Scene::instance().nbObservers() << '\n';
}

/// Reacts to a change with a change, which later observers receive first.
class Numbering : public Kiv::Observer
{
public:
    explicit Numbering(Kiv::memory::DataModel& model) : _model(model) {}

    void operator()(const Kiv::Notification& notification) override
    {
        const auto* added = dynamic_cast<const Kiv::ObjectAdd*>(&notification);
        if (added && added->item()->nodeType() == "shelf") { // not for its own items
            const Kiv::NotificationGuard batch(Kiv::Scene::instance());
            _model.make(added->item()->path(), "board", "board1");
            _model.make(added->item()->path(), "board", "board2");
        }
    }

private:
    Kiv::memory::DataModel& _model;
};

class Count : public Kiv::Observer
{
public:
    void operator()(const Kiv::Notification& notification) override
    {
        const auto* all = dynamic_cast<const Kiv::SceneCompositeNotification*>(&notification);
        nbAdded += all ? all->size() : 1;
    }

    std::size_t nbAdded = 0;
};

void changingWhileBeingTold(Kiv::memory::DataModel& model, const std::shared_ptr<Count>& count)
{
    const auto numbering = std::make_shared<Numbering>(model);
    Kiv::Scene::instance().addObserver(numbering);
    Kiv::Scene::instance().addObserver(count);
    model.make(model.root(), "shelf", "shelf");
    std::cout << "added: " << count->nbAdded << '\n';
}

/// The steps of a plug-in before its code is unloaded.
void unload(std::unique_ptr<Kiv::memory::RunTime>& runTime, const Kiv::Observer::Ptr& observer,
            Kiv::host::UndoHistory& history)
{
    history.clear();                                 // its commands
    Kiv::GlobalSelection::get()->clear();            // its items
    Kiv::NamedSelection::remove("plugIn.recent");    // its items again
    Kiv::Scene::instance().removeObserver(observer); // its observers, from each subject
    runTime.reset();                                 // its handlers, name and separator
}

} // namespace

int main()
{
    const auto history = std::make_shared<Kiv::host::UndoHistory>();
    Kiv::Scene::initializeInstance(std::make_shared<Kiv::Scene>());
    Kiv::UndoableCommandMgr::initializeInstance(history);
    Kiv::GlobalSelection::initializeInstance(std::make_shared<Kiv::ObservableSelection>());

    auto runTime = std::make_unique<Kiv::memory::RunTime>();
    auto& model = runTime->model();
    itemsAndPaths(model.make(model.root(), "light", "lamp"));
    std::cout << '\n';
    namesOutliveItems(model.make(model.root(), "mesh", "chair"));
    std::cout << '\n';
    leavingWhileBeingTold(model);
    const auto count = std::make_shared<Count>();
    changingWhileBeingTold(model, count);
    std::cout << '\n';

    const auto kept = model.item(model.root());
    unload(runTime, count, *history);
    try {
        (void)Kiv::Hierarchy::hierarchy(kept);
    } catch (const Kiv::InvalidRunTimeId& error) {
        std::cout << "no run-time " << error.what() << '\n';
    }
    std::cout << "transform: " << (Kiv::Transform3d::transform3d(kept) ? "one" : "none") << '\n';

    Kiv::GlobalSelection::initializeInstance(nullptr);
    Kiv::UndoableCommandMgr::initializeInstance(nullptr);
    Kiv::Scene::initializeInstance(nullptr);
}
