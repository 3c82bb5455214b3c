#include <stdexcept>

#include "kiv/attributes.h"
#include "kiv/object3d.h"
#include "kiv/scene.h"

#include "editSequence.h"
#include "edits.h"
#include "following.h"
#include "probes.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

namespace {

/// Throws at every notification.
class Throwing : public Observer
{
public:
    void operator()(const Notification&) override
    {
        throw std::runtime_error("an observer that throws");
    }
};

void listen(const Observer::Ptr& observer)
{
    if (Scene::hasInstance()) {
        Scene::instance().addObserver(observer);
    }
    Attributes::addObserver(observer);
    Object3d::addObserver(observer);
}

} // namespace

void checkMaking(Checking& checking)
{
    checking.at("commands.making", "before the first command");
    const auto most = checking.options().maxItems;
    const auto following = std::make_shared<Following>(checking);
    listen(following);
    for (unsigned step = 0; step < checking.options().nbSteps; ++step) {
        const auto before = snapshot(checking.running().roots, most);
        following->begin();
        following->expect(before);
        const auto edit = randomEdit(checking);
        if (!edit.command) {
            break;
        }
        checking.at("commands.making", edit.text, edit.item);
        if (const auto found = difference(before, snapshot(checking.running().roots, most))) {
            checking.found("commands.making", found->item, found->expected, found->seen);
            return; // each further step would find the same
        }
        if (following->nbNotifications() > 0) {
            checking.found("no notification before the command is executed", "a notification");
        }
        Checking::answers([&] { edit.command->execute(); });
    }
}

void checkEdits(Checking& checking)
{
    const auto following = std::make_shared<Following>(checking);
    listen(following);
    EditSequence(checking, {"commands.failing", "commands.undo", "commands.redo"}, following).run();
}

void checkWithoutScene(Checking& checking)
{
    Scene::initializeInstance(nullptr);
    EditSequence(checking, {"scene.none", "scene.none", "scene.none"}, nullptr).run();
}

void checkThrowingObservers(Checking& checking)
{
    const auto observer = std::make_shared<Throwing>();
    listen(observer);
    const char* const contract = "observers.throwing";
    EditSequence(checking, {contract, contract, contract}, nullptr).run();
}

void checkFailingAllocations(Checking& checking)
{
    const char* const contract = "memory.failing";
    const auto& faults = checking.options().allocationFaults;
    if (!faults.arm || !faults.disarm) {
        checking.skip(contract, "the program does not let allocations fail");
        return;
    }
    const auto most = checking.options().maxItems;
    for (unsigned step = 0; step < std::min(checking.options().nbSteps, 30U); ++step) {
        const auto before = snapshot(checking.running().roots, most);
        const auto edit = randomEdit(checking);
        if (!edit.command || !Checking::answers([&] { edit.command->execute(); })) {
            continue;
        }
        const auto after = snapshot(checking.running().roots, most);
        edit.command->undo();
        bool failed = true;
        for (std::size_t nth = 1; failed && nth <= 60; ++nth) {
            checking.at(contract,
                        "redo of " + edit.text + " with the allocation number " +
                            std::to_string(nth) + " failing",
                        edit.item);
            faults.arm(nth);
            Checking::answers([&] { edit.command->redo(); });
            failed = faults.disarm();
            const auto now = snapshot(checking.running().roots, most);
            if (!difference(after, now)) {
                edit.command->undo();
            } else if (const auto found = difference(before, now)) {
                checking.found(contract, found->item, found->expected, found->seen);
                checking.end();
                break;
            }
        }
    }
}

} // namespace Kiv_v4::conformance
