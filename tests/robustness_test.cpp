// Memory that runs out at any allocation, and observers that throw wherever they are called.

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>

#include "kiv/notificationGuard.h"
#include "kiv/object3d.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/transform3dPathSubject.h"

#include "callback.h"
#include "memoryScene.h"
#include "modelledHistory.h"
#include "paths.h"
#include "random.h"
#include "stubs.h"

using namespace Kiv_v4;

namespace {

std::size_t untilFailure = 0; // the allocations from now to the one that fails; 0 for none

void* allocated(std::size_t size, std::size_t alignment)
{
    if (untilFailure != 0 && --untilFailure == 0) {
        throw std::bad_alloc();
    }
    auto* const memory = std::aligned_alloc(alignment, (size + alignment) / alignment * alignment);
    return memory ? memory : throw std::bad_alloc();
}

/// Does `run` with its first allocation failing, then with its second, and so on until it needs no
/// more; expects that `state` is as before each time that it fails, and when it is taken back.
template <class Run, class TakeBack, class State>
void failEachAllocation(const char* name, Run run, TakeBack takeBack, State state)
{
    const auto before = state();
    for (std::size_t n = 1, left = 0; left == 0; ++n) {
        untilFailure = n;
        try {
            run();
            left = std::exchange(untilFailure, 0);
            takeBack();
        } catch (const std::bad_alloc&) {
            ASSERT_EQ(untilFailure, 0U);
        }
        ASSERT_EQ(state(), before) << name << " after the failure of allocation " << n;
    }
}

} // namespace

void* operator new(std::size_t size)
{
    return allocated(size, alignof(std::max_align_t));
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    return allocated(size, static_cast<std::size_t>(alignment));
}

// Inlined, these look to GCC as if they released the memory of another allocator.
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::align_val_t) noexcept
{
    std::free(memory);
}

TEST(FailingAllocations, LeaveNamesAndPathsAsTheyWere)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 300; ++i) {
        texts.push_back("name " + std::to_string(i));
    }
    std::vector<PathComponent> names;
    failEachAllocation(
        "intern", [&] { names = PathComponent::toComponents(texts); },
        [&] { names = std::vector<PathComponent>(); }, PathComponent::tableSize);
    const auto source = test::path("/a/b|:c/a rather long name");
    Path path;
    failEachAllocation(
        "edit", [&] { path = source.reparent(source.head(1), test::path("/p|:q")).pop() + "new"; },
        [&] { path = Path(); },
        [&] { return std::tuple(PathComponent::tableSize(), path, test::notation(source)); });
}

TEST(FailingAllocations, LeaveSelectionsAndTriesAsTheyWere)
{
    const auto one = test::itemAt("/a/b");
    const auto two = test::itemAt("/a/c/d");
    const auto other = test::itemAt("/x/y");
    for (const auto withTrie : {false, true}) {
        Selection plain;
        ObservableSelection gathering;
        const NotificationGuard guard(gathering);
        for (auto* const selection : {&plain, static_cast<Selection*>(&gathering)}) {
            selection->append(one);
            selection->append(two);
            const auto state = [&] {
                return std::tuple(test::pathsOf(*selection), selection->contains(other->path()),
                                  withTrie ? std::as_const(*selection).trie().size() : 0);
            };
            (void)state();
            const auto remove = [&] { selection->remove(other); };
            failEachAllocation(
                "append", [&] { selection->append(other); }, remove, state);
            failEachAllocation(
                "insert", [&] { selection->insert(two, other); }, remove, state);
        }
    }
    Trie<std::string> trie;
    trie.add(one->path(), "one");
    trie.add(two->path(), "two");
    const auto state = [&] {
        return std::tuple(trie.size(), trie.contains(other->path()), trie.contains(one->path()));
    };
    const std::string data(100, 'd');
    failEachAllocation(
        "add", [&] { trie.add(other->path(), data); }, [&] { trie.remove(other->path()); }, state);
    failEachAllocation(
        "move", [&] { trie.move(one->path(), other->path()); },
        [&] { trie.move(other->path(), one->path()); }, state);
}

TEST(FailingAllocations, LeaveRegistriesAsTheyWere)
{
    std::optional<memory::RunTime> runTime;
    failEachAllocation(
        "run-time", [&] { runTime.emplace(); }, [&] { runTime.reset(); },
        [] { return RunTimeMgr::instance().getIds(); });
    RunTimeMgr::Handlers handlers;
    handlers.batchOpsHandler = {std::make_shared<int>(), nullptr};
    failEachAllocation(
        "register", [&] { RunTimeMgr::instance().register_("plain", handlers); },
        [] { RunTimeMgr::instance().unregister(RunTimeMgr::instance().getId("plain")); },
        [&] { return handlers.batchOpsHandler.use_count(); });
    std::optional<RunTimeRegistration> registration(std::in_place, "plain", '/', handlers);
    untilFailure = 1;
    registration.reset();
    EXPECT_EQ(std::exchange(untilFailure, 0), 1U) << "allocations while a run-time goes";

    const auto observer = std::make_shared<Observer>();
    const auto item = test::itemAt("/a");
    failEachAllocation(
        "observer", [&] { Transform3d::addObserver(item, observer); },
        [&] { Transform3d::removeObserver(item, observer); },
        [&] { return Transform3d::hasObservers(item->path()); });
}

struct FailingAllocationsInTheScene : test::MemoryScene
{
    const test::Services services;
    host::UndoHistory& history = *services.history;
    test::Random random;
    test::RandomEditor editor{model, [this](auto bound) { return random.below(bound); }};
};

TEST_F(FailingAllocationsInTheScene, LoseNoCommandThatRanAndKeepNoneThatFailed)
{
    struct Count : UndoableCommand
    {
        void undo() override { --count; }
        void redo() override { ++count; }
        int count = 0;
    };
    const auto command = std::make_shared<Count>();
    const auto state = [&] { return std::pair(command->count, history.nbDone()); };
    failEachAllocation(
        "history", [&] { history.executeCmd(command); }, [&] { history.undo(); }, state);
    failEachAllocation(
        "guard",
        [&] {
            const UndoableCommandGuard outer("outer");
            const UndoableCommandGuard inner("inner");
            test::execute(command);
            ASSERT_NE(untilFailure, 0U) << "an allocation after the command";
        },
        [&] { command->undo(); }, state);
}

TEST_F(FailingAllocationsInTheScene, LetAnyEditFailWithoutATrace)
{
    testing::internal::CaptureStderr();
    for (int i = 0; i < 200 && !HasFatalFailure(); ++i) {
        // A selection that is replaced may be left with some of its items.
        const auto command = editor.command();
        if (command && !std::dynamic_pointer_cast<SelectionClear>(command) &&
            !std::dynamic_pointer_cast<SelectionReplaceWith>(command)) {
            const auto now = [this] { return test::sceneState(world); };
            const auto undo = [&] { command->undo(); };
            const auto redo = [&] { command->redo(); };
            failEachAllocation(
                "execute", [&] { command->execute(); }, undo, now);
            command->execute();
            failEachAllocation("undo", undo, redo, now);
            undo();
            failEachAllocation("redo", redo, undo, now);
            redo();
        }
    }
    testing::internal::GetCapturedStderr();
}

TEST(ThrowingObservers, StopNoEdit)
{
    test::Random random;
    int received = 0;
    const auto thrower = test::Callback::make([&](const Notification&) {
        ++received;
        random.below(2) ? throw 42 : throw std::runtime_error("an observer");
    });
    testing::internal::CaptureStderr();
    test::ModelledHistory both(random);
    Transform3dPathSubject place(both.world()->path());
    place.addObserver(thrower);
    Scene::instance().addObserver(thrower);
    Attributes::addObserver(thrower);
    for (int i = 0; i < 400; ++i) {
        both.step();
    }
    testing::internal::GetCapturedStderr();
    EXPECT_GT(received, 100);
}
