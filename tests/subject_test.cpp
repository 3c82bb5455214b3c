#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/light.h"
#include "kiv/notificationGuard.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/subject.h"
#include "kiv/transform3d.h"

#include "callback.h"
#include "paths.h"
#include "random.h"

using namespace Kiv_v4;
using test::Callback;

namespace {

Observer::Ptr counter(int& calls)
{
    return Callback::make([&calls](const Notification&) { ++calls; });
}

void addAll(Subject& subject, const std::vector<Observer::Ptr>& observers)
{
    for (const auto& observer : observers) {
        subject.addObserver(observer);
    }
}

/// Counts what guards do, and gathers nothing.
class Gathering : public Subject
{
public:
    bool inCompositeNotification() const override { return begun != ended; }
    void beginNotificationGuard() override { ++begun; }
    void endNotificationGuard() override { ++ended; }

    int begun = 0;
    int ended = 0;
};

} // namespace

TEST(Subject, KnowsAnObserverOnceUntilItIsRemoved)
{
    Subject subject;
    int calls = 0;
    const auto observer = counter(calls);
    EXPECT_FALSE(subject.removeObserver(observer));
    EXPECT_TRUE(subject.addObserver(observer));
    EXPECT_FALSE(subject.addObserver(observer));
    EXPECT_EQ(subject.nbObservers(), 1u);
    subject.notify(Notification());
    EXPECT_TRUE(subject.removeObserver(observer));
    EXPECT_FALSE(subject.hasObserver(observer));
    subject.notify(Notification());
    EXPECT_EQ(calls, 1);
}

TEST(Subject, ForgetsObserversThatDiedWhenItNotifiesOrCounts)
{
    Subject subject;
    int calls = 0;
    const auto living = counter(calls);
    subject.addObserver(living);
    subject.addObserver(counter(calls));
    subject.addObserver(nullptr); // an entry that can be asked for after its death
    EXPECT_EQ(subject.nbObservers(), 1u);
    EXPECT_FALSE(subject.hasObserver(nullptr));
    subject.addObserver(counter(calls));
    subject.addObserver(nullptr);
    subject.notify(Notification());
    EXPECT_FALSE(subject.hasObserver(nullptr));
    EXPECT_EQ(calls, 1);
}

TEST(Subject, KeepsItsOwnObserversWhenCopiedMovedAndAssigned)
{
    const auto observer = std::make_shared<Observer>();
    Subject subject;
    subject.addObserver(observer);
    Subject copy(subject);
    EXPECT_EQ(copy.nbObservers(), 0u);
    EXPECT_EQ(Subject(std::move(subject)).nbObservers(), 0u);
    subject = copy;
    subject = Subject();
    EXPECT_TRUE(subject.hasObserver(observer));
}

TEST(Subject, LogsAStandardExceptionOfAnObserverAndGoesOn)
{
    Subject subject;
    int calls = 0;
    const std::vector<Observer::Ptr> observers{
        counter(calls),
        Callback::make([](const Notification&) { throw std::runtime_error("no such row"); }),
        counter(calls)};
    addAll(subject, observers);
    testing::internal::CaptureStderr();
    subject.notify(Notification());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Subject notification caught and silenced exception no such row\n\n"
              "\tFile: src/subject\n\tLine: 82\n\tFunction: notify\n");
    EXPECT_EQ(calls, 2);
}

TEST(Subject, LetsAnyOtherExceptionEndItsWalkInOwnerOrder)
{
    Subject subject;
    int calls = 0;
    const auto thrower = Callback::make([](const Notification&) { throw 42; });
    std::vector<Observer::Ptr> observers{counter(calls), thrower, counter(calls)};
    addAll(subject, observers);
    subject.addObserver(nullptr); // sorts first
    std::sort(observers.begin(), observers.end(), std::owner_less<Observer::Ptr>());
    EXPECT_THROW(subject.notify(Notification()), int);
    EXPECT_EQ(calls, std::find(observers.begin(), observers.end(), thrower) - observers.begin());
    EXPECT_TRUE(subject.hasObserver(nullptr));
}

TEST(Subject, RefusesToNotifyUntilTheOutermostGuardEnds)
{
    Gathering subject;
    int calls = 0;
    const auto observer = counter(calls);
    subject.addObserver(observer);
    {
        const NotificationGuard outer(subject);
        {
            const NotificationGuard inner(subject);
        }
        EXPECT_THAT([&] { subject.notify(Notification()); },
                    testing::ThrowsMessage<std::logic_error>(testing::StrEq(
                        "Illegal call to Subject::notify() inside a composite notification.")));
        EXPECT_EQ(subject.ended, 0);
    }
    EXPECT_EQ(subject.begun, 1);
    EXPECT_EQ(subject.ended, 1);
    EXPECT_EQ(calls, 0);
    subject.notify(Notification());
    EXPECT_EQ(calls, 1);
}

// Observers at random throw, die, release others, add new ones, count and notify again, all from
// inside notifications; meant to be run under the address sanitizer.
TEST(Subject, SurvivesWhatItsObserversDoWhileTheyAreNotified)
{
    test::Random random;
    Subject subject;
    std::vector<Observer::Ptr> owners;
    bool nested = false;
    const auto release = [&] { // maybe the observer that is running
        std::swap(random.of(owners), owners.back());
        owners.pop_back();
    };
    Callback::Function act;
    const auto add = [&] {
        owners.push_back(Callback::make([&](const Notification& n) { act(n); }));
        EXPECT_TRUE(subject.addObserver(owners.back()));
    };
    act = [&](const Notification& notification) {
        switch (random.below(5)) {
        case 0:
            throw std::runtime_error("thrown by an observer");
        case 1:
            return owners.size() < 40 ? add() : release();
        case 2:
            EXPECT_GE(subject.nbObservers(), owners.size());
            return;
        case 3:
            if (!std::exchange(nested, true)) {
                subject.notify(notification);
                nested = false;
            }
            return;
        }
    };
    testing::internal::CaptureStderr();
    for (int i = 0; i != 300; ++i) {
        while (owners.size() < 20) {
            add();
        }
        subject.notify(Notification());
        release();
        EXPECT_EQ(subject.nbObservers(), owners.size());
    }
    testing::internal::GetCapturedStderr();
}

template <class Interface>
struct ItemObservers : testing::Test
{};
using ObservedInterfaces = testing::Types<Attributes, Transform3d, Camera, Light>;
TYPED_TEST_SUITE(ItemObservers, ObservedInterfaces);

TYPED_TEST(ItemObservers, AreKeptByPathUntilTheLastOfThemIsRemoved)
{
    using I = TypeParam;
    const auto [item, again] = std::pair(test::itemAt("/a/b"), test::itemAt("/a/b"));
    const auto observer = std::make_shared<Observer>();
    auto dying = std::make_shared<Observer>();
    EXPECT_FALSE(I::addObserver(nullptr, observer) || I::hasObservers(item->runTimeId()));
    EXPECT_TRUE(I::addObserver(item, observer) && I::addObserver(again, dying));
    EXPECT_TRUE(!I::addObserver(again, observer) && I::hasObserver(again, observer));
    for (const auto& other : {SceneItem::Ptr(), test::itemAt("/a"), test::itemAt(":a/b")}) {
        EXPECT_FALSE(I::hasObserver(other, observer) || I::removeObserver(other, observer));
        EXPECT_EQ(I::nbObservers(other), 0U);
    }
    EXPECT_EQ(I::nbObservers(again), 2U);
    dying.reset();
    EXPECT_EQ(I::nbObservers(again), 1U);
    EXPECT_TRUE(I::removeObserver(again, observer)) << "the last";
    EXPECT_FALSE(I::hasObservers(item->path()) || I::removeObserver(item, observer));
    EXPECT_TRUE(I::hasObservers(item->runTimeId()) && !I::hasObservers(test::runTimeOf(':')));

    I::addObserver(item, std::make_shared<Observer>());
    EXPECT_TRUE(I::hasObservers(item->path())) << "the dead count";
    if constexpr (requires { I::removeObserver(Path(), observer); }) {
        EXPECT_TRUE(I::addObserver(item, observer) && I::removeObserver(item->path(), observer));
        EXPECT_FALSE(I::hasObservers(item->path()));
    }
}

TYPED_TEST(ItemObservers, GoWithTheRunTimeOfTheItemAndDoNotKeepTheItem)
{
    using I = TypeParam;
    const auto [kept, late] = std::pair(test::itemAt("!kept"), test::itemAt("!late"));
    const auto observer = std::make_shared<Observer>();
    auto runTime = std::make_unique<RunTimeRegistration>("leaving", '/');
    const auto id = runTime->id();
    const Path path(PathSegment("/a/b", id, '/'));
    const auto release = [&, late = late](const test::Item* dying) {
        I::addObserver(late, observer);
        delete dying;
    };
    I::addObserver(kept, observer);
    I::addObserver(SceneItem::Ptr(new test::Item(path), release), observer);
    I::addObserver(std::make_shared<test::Item>(path.pop()), std::make_shared<Observer>());
    runTime.reset();
    EXPECT_FALSE(I::hasObservers(path) || I::hasObservers(path.pop()));
    EXPECT_TRUE(I::hasObservers(id)) << "whether there ever were any";
    EXPECT_TRUE(I::hasObserver(kept, observer) && I::hasObserver(late, observer));
    EXPECT_TRUE(I::removeObserver(kept, observer) && I::removeObserver(late, observer));
}
