#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "kiv/kit/gateways.h"
#include "kiv/kit/mounts.h"
#include "kiv/notificationGuard.h"
#include "kiv/pathString.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"

#include "callback.h"
#include "random.h"
#include "stubs.h"

using namespace Kiv_v4;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Document : kit::Mount
{
    explicit Document(int known) : id(known) {}
    const int id;
};

/// A run-time of groups and gateways into one other, which tells of its changes in either way.
class Owner
{
public:
    using Items = std::map<std::string, bool>; ///< By path, whether it is a gateway.

    Owner(const std::string& name, char separator, Rtid into, bool tells)
        : _registration(name, separator), _separator(separator)
    {
        const auto target = [this, into](const Path& path) {
            const auto found = items.find(text(path));
            return found != items.end() && found->second ? into : 0;
        };
        if (tells) {
            _owner.emplace(_registration.id(), target);
        }
        _stub->onCreateItem = [this](const Path& path) {
            return items.count(text(path)) != 0 ? std::make_shared<test::Item>(path) : nullptr;
        };
        _segments->owner = this;
        auto& manager = RunTimeMgr::instance();
        manager.setHierarchyHandler(_registration.id(), _stub);
        manager.setSceneSegmentHandler(_registration.id(), _segments);
    }

    void add(const Items& added)
    {
        items.insert(added.begin(), added.end());
        if (_owner) {
            kit::GatewayOwner::itemAdded(path(added.begin()->first));
        }
        Scene::instance().notify(ObjectAdd(item(added.begin()->first)));
    }

    Items remove(const std::string& top)
    {
        const auto removed = taken(top);
        if (_owner) {
            kit::GatewayOwner::itemRemoved(path(top));
        }
        Scene::instance().notify(ObjectPostDelete(item(top)));
        return removed;
    }

    void move(const std::string& from, const std::string& to)
    {
        for (const auto& [name, isGateway] : taken(from)) {
            items.emplace(to + name.substr(from.size()), isGateway);
        }
        if (_owner) {
            kit::GatewayOwner::itemMoved(path(from), path(to));
        }
        Scene::instance().notify(ObjectReparent(item(to), path(from)));
    }

    /// Takes an item and all that is under it away and tells nobody.
    Items taken(const std::string& top)
    {
        Items removed;
        for (auto known = items.lower_bound(top); known != items.end();) {
            const auto isUnder = known->first == top || known->first.starts_with(top + '/');
            if (isUnder) {
                removed.insert(*known);
            }
            known = isUnder ? items.erase(known) : std::next(known);
        }
        return removed;
    }

    [[nodiscard]] Path path(const std::string& name) const
    {
        PathSegment::Components components;
        for (std::size_t at = 0; at < name.size();) {
            const auto end = std::min(name.find('/', at + 1), name.size());
            components.push_back(name.substr(at + 1, end - at - 1));
            at = end;
        }
        return PathSegment(components, _registration.id(), _separator);
    }

    [[nodiscard]] SceneItem::Ptr item(const std::string& name) const
    {
        return std::make_shared<test::Item>(path(name));
    }

    Items items;
    int nbSearches = 0;

private:
    struct Segments : SceneSegmentHandler
    {
        bool isGatewayItem(const Path& path) override
        {
            const auto found = owner->items.find(text(path));
            return found != owner->items.end() && found->second;
        }
        Selection gatewayItems(const Path& path) override
        {
            ++owner->nbSearches;
            Selection found;
            for (const auto& [name, isGateway] : owner->items) {
                if (isGateway && name.starts_with(text(path) + '/')) {
                    found.append(owner->item(name));
                }
            }
            return found;
        }
        Selection gatewayItems(const Path& path, Rtid) override { return gatewayItems(path); }

        Owner* owner = nullptr;
    };

    static std::string text(const Path& path)
    {
        std::string name;
        for (const auto& component : path) {
            name += '/' + component.string();
        }
        return name;
    }

    const RunTimeRegistration _registration;
    const char _separator;
    const std::shared_ptr<test::HierarchyStub> _stub = std::make_shared<test::HierarchyStub>();
    const std::shared_ptr<Segments> _segments = std::make_shared<Segments>();
    std::optional<kit::GatewayOwner> _owner;
};

struct MountsTest : testing::TestWithParam<bool>
{
    MountsTest()
    {
        Scene::initializeInstance(std::make_shared<Scene>());
        owner.add({{"/w", false}});
        Scene::instance().addObserver(observer);
    }
    ~MountsTest() override { Scene::initializeInstance(nullptr); }

    /// A gateway with a document under it.
    void mount(const std::string& gateway, int id)
    {
        owner.add({{gateway, true}});
        documents.mount(std::make_shared<Document>(id), owner.path(gateway));
    }

    /// 0 for none.
    [[nodiscard]] int at(const std::string& gateway) const
    {
        const auto found = documents.find(owner.path(gateway));
        EXPECT_TRUE(!found || found->gateway() == owner.path(gateway));
        return found ? found->id : 0;
    }

    RunTimeRegistration registration{"documents", ':'};
    kit::Mounts<Document> documents{registration.id(), ':'};
    Owner owner{"owner", '/', registration.id(), GetParam()};
    std::vector<std::string> invalidated;
    std::function<void()> onInvalidated = [] {};
    const Observer::Ptr observer = test::Callback::make([this](const Notification& notification) {
        if (const auto* change = dynamic_cast<const SubtreeInvalidate*>(&notification)) {
            invalidated.push_back(change->root()->path().back().string());
            onInvalidated();
        }
    });
};

INSTANTIATE_TEST_SUITE_P(All, MountsTest, testing::Bool(), [](const auto& known) {
    return known.param ? "OfAnOwnerThatTells" : "OfAnOwnerKnownFromTheScene";
});

/// Where documents are and where they are parked, as the contract says it, one change at a time.
struct Model
{
    std::map<std::string, int> shown;
    std::map<std::string, std::vector<int>> parked;

    void add(const Owner::Items& added)
    {
        for (const auto& [name, isGateway] : added) {
            if (auto& waiting = parked[name]; isGateway && !waiting.empty() && !shown[name]) {
                shown[name] = waiting.back();
                waiting.pop_back();
            }
        }
    }
    void remove(const Owner::Items& removed)
    {
        for (const auto& [name, isGateway] : removed) {
            if (shown[name]) {
                parked[name].push_back(shown[name]);
                shown[name] = 0;
            }
        }
    }
    void move(const Owner::Items& moved, const std::string& from, const std::string& to)
    {
        std::map<std::string, int> there;
        for (const auto& [name, isGateway] : moved) {
            there[to + name.substr(from.size())] = std::exchange(shown[name], 0);
        }
        for (const auto& [name, id] : there) {
            shown[name] = id;
        }
    }
    void forget(int id)
    {
        for (auto& [name, known] : shown) {
            known = known == id ? 0 : known;
        }
        for (auto& [name, waiting] : parked) {
            std::erase(waiting, id);
        }
    }
};

} // namespace

TEST_P(MountsTest, AreWhereTheirGatewaysAreAfterAnyEditsUndoAndRedo)
{
    using Change = std::function<void()>;
    struct Step
    {
        Change redo;
        Change undo;
        bool mounts = false;
    };
    test::Random random;
    Model model;
    std::vector<Step> done;
    std::vector<Step> undone;
    auto inBatch = false;
    auto nextId = 1;

    const auto add = [&](const Owner::Items& items) {
        model.add(items);
        owner.add(items);
    };
    const auto remove = [&](const std::string& top) { model.remove(owner.remove(top)); };
    const auto move = [&](const std::string& from, const std::string& to) {
        const auto moved = owner.taken(from);
        owner.items.insert(moved.begin(), moved.end());
        model.move(moved, from, to);
        owner.move(from, to);
    };
    const auto anyItem = [&](bool isGateway) {
        std::vector<std::string> names;
        for (const auto& item : owner.items) {
            if (item.second == isGateway) {
                names.push_back(item.first);
            }
        }
        return names.empty() ? std::string() : random.of(names);
    };
    const auto execute = [&](Step step) {
        step.redo();
        done.push_back(std::move(step));
        undone.clear();
    };
    const auto freeName = [&] {
        const auto name = anyItem(false) + "/x" + std::to_string(random.below(3));
        return owner.items.count(name) == 0 ? name : std::string();
    };
    const auto edit = [&] {
        const auto isGateway = random.below(2) == 0;
        const auto item = anyItem(isGateway);
        const auto name = freeName();
        switch (random.below(4)) {
        case 0:
            if (!name.empty()) {
                execute({[=] { add({{name, isGateway}}); }, [=] { remove(name); }});
            }
            break;
        case 1:
            if (!item.empty() && item != "/w") {
                auto gone = owner.taken(item);
                owner.items.insert(gone.begin(), gone.end());
                execute({[=] { remove(item); }, [=] { add(gone); }});
            }
            break;
        case 2:
            if (!item.empty() && item != "/w" && !name.empty() && !name.starts_with(item + '/')) {
                execute({[=] { move(item, name); }, [=] { move(name, item); }});
            }
            break;
        default:
            if (const auto gateway = anyItem(true); !gateway.empty() && !model.shown[gateway]) {
                const auto id = nextId++;
                const auto command = documents.mountCmd(std::make_shared<Document>(id),
                                                        owner.path(gateway), "Mount");
                // One that was parked at a place may have come back with a gateway moved there.
                execute({[=, &model] {
                             if (model.shown[gateway]) {
                                 EXPECT_THROW(command->redo(), std::invalid_argument);
                             } else {
                                 command->redo();
                                 model.shown[gateway] = id;
                             }
                         },
                         [=, &model] {
                             command->undo();
                             model.forget(id);
                         },
                         true});
            }
        }
    };
    // Within a batch, an owner known from the scene has not told yet where the places are.
    const auto turn = [&](std::vector<Step>& from, std::vector<Step>& to, Change Step::*change) {
        if (!from.empty() && (GetParam() || !inBatch || !from.back().mounts)) {
            to.push_back(std::move(from.back()));
            from.pop_back();
            (to.back().*change)();
        }
    };

    for (auto i = 0; i < 3000; ++i) {
        switch (random.below(8)) {
        case 0:
        case 1: {
            const NotificationGuard guard(Scene::instance());
            inBatch = true;
            for (auto turns = 0; turns < 2; ++turns) {
                if (random.below(3) > 0) {
                    turn(done, undone, &Step::undo);
                } else {
                    turn(undone, done, &Step::redo);
                }
            }
            if (GetParam()) {
                edit();
            }
            inBatch = false;
            break;
        }
        case 2:
            turn(done, undone, &Step::undo);
            break;
        case 3:
            turn(undone, done, &Step::redo);
            break;
        default:
            edit();
        }
        std::size_t nbShown = 0;
        for (const auto& [name, id] : model.shown) {
            ASSERT_EQ(at(name), id) << name << " after step " << i;
            nbShown += id ? 1 : 0;
        }
        documents.forEach([&](const Document&) { --nbShown; });
        ASSERT_EQ(nbShown, 0U);
    }
}

TEST_P(MountsTest, ReturnWhateverObserversMountAndUnmountMeanwhile)
{
    owner.add({{"/w/g", false}});
    for (auto i = 1; i <= 4; ++i) {
        mount("/w/g/i" + std::to_string(i), i);
    }
    const auto removed = owner.remove("/w/g");
    documents.unmount(owner.path("/w/g/i4"));
    auto nbCalls = 0;
    onInvalidated = [&] {
        if (++nbCalls == 1) {
            for (const auto* gateway : {"/w/g/i1", "/w/g/i2"}) {
                documents.unmount(owner.path(gateway));
            }
            documents.mount(std::make_shared<Document>(5), owner.path("/w/g/i4"));
        }
    };
    if (GetParam()) {
        owner.add(removed);
        EXPECT_EQ(at("/w/g/i1"), 1) << "in place before anybody is told";
        documents.unmount(owner.path("/w/g/i3")); // tells somebody
        EXPECT_EQ(at("/w/g/i3"), 0);
    } else {
        owner.add(removed);
        EXPECT_EQ(at("/w/g/i3"), 3);
    }
    EXPECT_EQ(at("/w/g/i1"), 0);
    EXPECT_EQ(at("/w/g/i2"), 0);
    EXPECT_EQ(at("/w/g/i4"), 5);
}

TEST_P(MountsTest, AreAnnouncedOnlyToThoseWhoMayHaveLookedBefore)
{
    mount("/w/i", 1);
    EXPECT_THAT(invalidated, ElementsAre("i"));
    invalidated.clear();
    owner.move("/w", "/v");
    EXPECT_EQ(at("/v/i"), 1);
    owner.add(owner.remove("/v"));
    EXPECT_EQ(at("/v/i"), 1);
    if (GetParam()) {
        EXPECT_THAT(invalidated, IsEmpty());
    } else {
        EXPECT_THAT(invalidated, ElementsAre("i", "i"));
    }
    documents.unmount(owner.path("/v/i"));
    EXPECT_EQ(invalidated.back(), "i");
}

TEST_P(MountsTest, HearNothingOfItemsOfTheSameNames)
{
    mount("/w/i", 1);
    Owner other("other", '|', registration.id(), GetParam());
    other.add({{"/w", false}, {"/w/i", true}});
    documents.mount(std::make_shared<Document>(2), other.path("/w/i"));
    owner.remove("/w/i");
    EXPECT_EQ(at("/w/i"), 0);
    EXPECT_EQ(documents.find(other.path("/w/i"))->id, 2);
    other.move("/w", "/v");
    EXPECT_EQ(documents.find(other.path("/v/i"))->id, 2);
    owner.add({{"/w/i", true}});
    EXPECT_EQ(at("/w/i"), 1);
}

TEST_P(MountsTest, ComeBackBehindGatewaysOfMountedRunTimes)
{
    const RunTimeRegistration innerId("inner", ';');
    Owner middle("middle", '|', innerId.id(), GetParam());
    kit::Mounts<Document> inner(innerId.id(), ';');
    const auto way = [&](const std::string& gateway) {
        return owner.path(gateway) + middle.path("/m").getSegments().front();
    };
    // Items of the middle run-time are there while their gateway shows something.
    middle.items = {{"/w/i/m", true}, {"/w/j/m", true}};
    mount("/w/i", 1);
    inner.mount(std::make_shared<Document>(2), way("/w/i"));
    owner.move("/w/i", "/w/j");
    EXPECT_TRUE(inner.find(way("/w/j")));
    owner.add(owner.remove("/w/j"));
    EXPECT_TRUE(inner.find(way("/w/j")));
    const auto document = documents.find(owner.path("/w/j"));
    documents.unmount(owner.path("/w/j"));
    EXPECT_FALSE(inner.find(way("/w/j")));
    documents.mount(document, owner.path("/w/j"));
    EXPECT_TRUE(inner.find(way("/w/j")));
}

TEST_P(MountsTest, LeaveWithItemsWhoseDeletionIsOnlyToldBefore)
{
    mount("/w/i", 1);
    mount("/w/j", 2);
    Scene::instance().notify(ObjectPreDelete(owner.item("/w/i")));
    EXPECT_EQ(at("/w/i"), 1) << "it can still be asked about";
    if (!GetParam()) {
        owner.taken("/w/i");
        EXPECT_EQ(at("/w/i"), 0);
        {
            const NotificationGuard guard(Scene::instance());
            Scene::instance().notify(ObjectPreDelete(owner.item("/w/j")));
            owner.taken("/w/j");
        }
        EXPECT_EQ(at("/w/j"), 0);
        owner.add({{"/w/i", true}});
        EXPECT_EQ(at("/w/i"), 1);
    }
}

TEST_P(MountsTest, AskOnceForAllThatReturnUnderAParent)
{
    std::vector<Owner::Items> removed;
    for (auto i = 0; i < 50; ++i) {
        mount("/w/i" + std::to_string(i), i + 1);
    }
    for (auto i = 0; i < 50; ++i) {
        removed.push_back(owner.remove("/w/i" + std::to_string(i)));
    }
    owner.nbSearches = 0;
    {
        const NotificationGuard guard(Scene::instance());
        for (const auto& items : removed) {
            owner.add(items);
        }
    }
    EXPECT_EQ(owner.nbSearches, GetParam() ? 0 : 1);
    EXPECT_EQ(at("/w/i49"), 50);
}

TEST_P(MountsTest, RefuseWhatCannotBeAndForgetWhatIsDestroyed)
{
    mount("/w/i", 1);
    const auto in = owner.path("/w/i");
    EXPECT_THROW(mount("/w/i", 2), std::invalid_argument);
    EXPECT_THROW(documents.mount(std::make_shared<Document>(2), {}), std::invalid_argument);
    EXPECT_THROW(documents.mount(nullptr, owner.path("/w")), std::invalid_argument);
    EXPECT_THROW(documents.mount(documents.find(in), owner.path("/w")), std::invalid_argument);
    EXPECT_EQ(documents.at(in + PathSegment("x", registration.id(), ':'))->id, 1);
    EXPECT_FALSE(documents.at(in + PathSegment("x", registration.id(), '/')));
    EXPECT_FALSE(documents.at(in));

    const auto parked = documents.find(in);
    owner.add(owner.remove("/w/i"));
    EXPECT_EQ(documents.find(in), parked);
    const auto removed = owner.remove("/w/i");
    owner.add({{"/w/j", true}});
    documents.mount(parked, owner.path("/w/j")); // which takes it from where it was parked
    owner.add(removed);
    EXPECT_EQ(at("/w/i"), 0);
    EXPECT_EQ(at("/w/j"), 1);
    documents.unmount(owner.path("/w/j"));

    documents.mount(parked, in);
    owner.remove("/w/i");
    Scene::instance().notify(ObjectDestroyed(in));
    owner.add(removed);
    EXPECT_EQ(at("/w/i"), 0);

    auto dead = std::make_unique<kit::Mounts<Document>>(registration.id(), ':');
    const auto command = dead->mountCmd(std::make_shared<Document>(3), in, "Mount");
    command->execute();
    const auto kept = dead->find(in);
    dead.reset();
    EXPECT_FALSE(kept->isShown());
    EXPECT_NO_THROW(command->undo());
    EXPECT_THROW(command->redo(), std::runtime_error);
}
