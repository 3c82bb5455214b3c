#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>

#include "kiv/notificationGuard.h"
#include "kiv/pathString.h"
#include "kiv/pathSubject.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"

#include "callback.h"
#include "items.h"
#include "memoryScene.h"
#include "random.h"

using namespace Kiv_v4;
using test::Callback;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;

/// The subjects of items, as far as path subjects need them: who observes which path.
class Registry
{
public:
    PathSubject::AddObserverFn adding()
    {
        return [this](const SceneItem::Ptr& item, const Observer::Ptr& observer) {
            const auto path = PathString::string(item->path());
            calls.push_back("+" + path);
            return _observers.emplace(path, observer).second;
        };
    }

    PathSubject::RemoveObserverFn removing()
    {
        return [this](const Path& path, const Observer::Ptr& observer) {
            const auto text = PathString::string(path);
            calls.push_back("-" + text);
            const auto found = _observers.find(text);
            if (found == _observers.end() || found->second.lock() != observer) {
                return false;
            }
            _observers.erase(found);
            return true;
        };
    }

    [[nodiscard]] Texts observed() const
    {
        Texts paths;
        for (const auto& entry : _observers) {
            paths.push_back(entry.first);
        }
        return paths;
    }

    void announce(const std::string& path) { (*_observers.at(path).lock())(Notification()); }

    Texts calls;

private:
    std::map<std::string, std::weak_ptr<Observer>> _observers;
};

struct PathSubjectTest : test::MemoryScene
{
    [[nodiscard]] Path at(const std::string& path) const { return PathString::path(path); }

    [[nodiscard]] std::vector<SceneItem::Ptr> items() const { return test::allUnder(world); }

    std::unique_ptr<PathSubject> following(const Path& path)
    {
        return std::make_unique<PathSubject>(path, registry.adding(), registry.removing());
    }

    Registry registry;
};

/// The path and, in the order of the registry, those of its ancestors.
Texts ancestry(const Path& path)
{
    std::set<std::string> texts;
    for (auto step = path; !step.empty(); step = step.pop()) {
        texts.insert(PathString::string(step));
    }
    return {texts.begin(), texts.end()};
}

} // namespace

TEST_F(PathSubjectTest, RelaysItsItemAndItsAncestorsAndMovesOnlyWhatARenameMoves)
{
    const auto a = model.make(model.root(), "mesh", "a");
    const auto b = model.make(a->path(), "mesh", "b");
    const auto other = model.make(model.root(), "mesh", "other");
    auto received = 0;
    const auto observer = Callback::make([&](const Notification&) { ++received; });
    auto subject = following(b->path());
    subject->addObserver(observer);
    EXPECT_THAT(registry.calls, ElementsAre("+/world/a/b", "+/world/a", "+/world"));
    registry.announce("/world/a/b");
    registry.announce("/world");
    EXPECT_EQ(received, 2);

    registry.calls.clear();
    model.rename(other->path(), "another");
    EXPECT_THAT(registry.calls, IsEmpty());
    model.rename(a->path(), "c");
    EXPECT_THAT(registry.calls,
                ElementsAre("-/world/a/b", "-/world/a", "+/world/c/b", "+/world/c"));
    EXPECT_EQ(subject->path(), at("/world/c/b"));

    subject.reset();
    EXPECT_THAT(registry.observed(), IsEmpty());
    model.remove(at("/world/another"));
}

TEST_F(PathSubjectTest, IgnoresAnnouncementsThatNameNoItem)
{
    const auto a = model.make(model.root(), "mesh", "a");
    const auto subject = following(a->path());
    Scene::instance().notify(ObjectPathChange(ObjectPathChange::Renamed));
    Scene::instance().notify(ObjectRename(a, Path()));
    EXPECT_EQ(subject->path(), a->path());
    EXPECT_EQ(registry.observed(), ancestry(a->path()));
    Scene::instance().notify(ObjectPreDelete(model.item(model.root())));
    EXPECT_TRUE(subject->path().empty());
    EXPECT_THAT(registry.observed(), IsEmpty());
    model.rename(a->path(), "b");
    EXPECT_TRUE(subject->path().empty());
}

TEST_F(PathSubjectTest, IgnoresItemsOfEqualNamesInAnotherRunTime)
{
    memory::RunTime other("other");
    const auto own = model.make(model.root(), "mesh", "a");
    const auto foreign = other.model().make(other.model().root(), "mesh", "a")->path();
    const auto subject = following(own->path());
    registry.calls.clear();
    const auto group = other.model().make(other.model().root(), "group", "group")->path();
    other.model().move(foreign, group);
    const auto again = other.model().make(other.model().root(), "mesh", "a")->path();
    other.model().rename(again, "b");
    other.model().make(other.model().root(), "mesh", "a");
    other.model().remove(foreign);
    EXPECT_EQ(subject->path(), own->path());
    EXPECT_THAT(registry.calls, IsEmpty());
}

TEST_F(PathSubjectTest, FollowsItsItemThroughRandomEditsUntilItIsDeleted)
{
    test::Random random;
    const auto name = [&] { return std::string(1, static_cast<char>('a' + random.below(3))); };
    auto nbMade = 0;
    auto nbFollowed = 0;
    std::unique_ptr<PathSubject> subject;
    std::string followed; // the node type, which is unique and stays

    for (auto round = 0; round < 2000; ++round) {
        // Several edits at once under a guard, or a single one.
        std::optional<NotificationGuard> guard;
        if (random.below(4) == 0) {
            guard.emplace(Scene::instance());
        }
        for (auto edits = guard ? random.below(6) : 1; edits > 0; --edits) {
            const auto all = items();
            const auto path = random.of(all)->path();
            const auto target = random.of(all)->path();
            const auto free = model.uniqueName(target, name());
            const auto isTop = path == model.root();
            const auto kind = random.below(10);
            if (kind < 3 || isTop) {
                if (all.size() < 30) {
                    model.make(target, "node" + std::to_string(nbMade++), free);
                }
            } else if (kind < 6) {
                model.rename(path, model.uniqueName(path.pop(), name()));
            } else if (kind < 9) {
                if (!target.startsWith(path) && !model.item(target + path.back())) {
                    model.move(path, target);
                }
            } else {
                model.remove(path);
            }
        }
        guard.reset();

        Path expected;
        for (const auto& item : items()) {
            if (item->nodeType() == followed) {
                expected = item->path();
            }
        }
        if (subject) {
            ASSERT_EQ(subject->path(), expected);
        }
        ASSERT_EQ(registry.observed(), ancestry(expected));
        if (expected.empty() || random.below(40) == 0) {
            subject.reset();
            ASSERT_THAT(registry.observed(), IsEmpty());
            const auto all = items();
            const auto next = random.of(all);
            followed = next->nodeType();
            subject = following(next->path());
            ++nbFollowed;
        }
    }
    EXPECT_GT(nbFollowed, 10);
}

TEST_F(PathSubjectTest, SkipsItemsThatAreNotThereAndPassesTheErrorsOfItsFunctionsOn)
{
    auto missing = following(at("/world/none/at all"));
    EXPECT_THAT(registry.observed(), ElementsAre("/world"));
    missing.reset();
    {
        const Path behind(Path(model.root()) + PathSegment(":gone:item", 4711, ':'));
        testing::internal::CaptureStderr();
        const auto below = following(behind);
        EXPECT_THAT(registry.observed(), ElementsAre("/world"));
        EXPECT_THAT(testing::internal::GetCapturedStderr(), IsEmpty()) << "no such run-time";
    }
    EXPECT_THROW(PathSubject(model.root(), {}, registry.removing()), std::bad_function_call);
    EXPECT_THROW(PathSubject(model.root(), registry.adding(), {}).removeObserver(model.root()),
                 std::bad_function_call);
    const auto a = model.make(model.root(), "mesh", "a");
    Registry broken;
    const auto addingOnce = [add = broken.adding()](const auto& item, const auto& observer) {
        return item->path().size() == 2 ? add(item, observer) : throw std::runtime_error("broken");
    };
    EXPECT_THROW(PathSubject(a->path(), addingOnce, broken.removing()), std::runtime_error);
    EXPECT_THAT(broken.observed(), IsEmpty());
}
