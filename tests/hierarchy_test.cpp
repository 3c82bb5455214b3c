#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "kiv/hierarchyHandler.h"
#include "kiv/hierarchy_v4_2.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"
#include "kiv/subtreeWalk.h"

#include "items.h"
#include "memoryScene.h"
#include "nested.h"
#include "random.h"

using namespace Kiv_v4;

namespace {

/// What a walk tells of an item: depth, path and node type.
using Told = std::tuple<std::size_t, std::string, std::string>;

Told told(std::size_t depth, const SceneItem& item)
{
    return {depth, PathString::string(item.path()), item.nodeType()};
}

/// The first interface of another hierarchy.
class FirstInterface : public Hierarchy
{
public:
    explicit FirstInterface(Ptr whole) : _whole(std::move(whole)) {}

    SceneItem::Ptr sceneItem() const override { return _whole->sceneItem(); }
    bool hasChildren() const override { return _whole->hasChildren(); }
    SceneItemList children() const override { return _whole->children(); }
    bool hasFilteredChildren(const ChildFilter&) const override { return false; }
    SceneItemList filteredChildren(const ChildFilter&) const override { return {}; }
    ChildFilter defaultChildFilter() const override { return {}; }
    SceneItem::Ptr parent() const override { return _whole->parent(); }
    SceneItem::Ptr defaultParent() const override { return nullptr; }
    SceneItemResultUndoableCommand::Ptr createChildCmd(const std::string&,
                                                       const PathComponent&) override
    {
        return nullptr;
    }
    InsertChildCommand::Ptr insertChildCmd(const SceneItem::Ptr&, const SceneItem::Ptr&) override
    {
        return nullptr;
    }
    SceneItemResultUndoableCommand::Ptr createGroupCmd(const SceneItemList&,
                                                       const PathComponent&) override
    {
        return nullptr;
    }
    UndoableCommand::Ptr reorderCmd(const SceneItemList&) override { return nullptr; }
    UndoableCommand::Ptr ungroupCmd() override { return _whole->ungroupCmd(); }

private:
    const Ptr _whole;
};

/// Random items in memory, some of them gateways to another memory scene or to a least run-time
/// whose items have no children.
struct HierarchyRows : test::MemoryScene
{
    HierarchyRows()
    {
        nested.items->onHierarchy = [](const auto& item) {
            return std::make_shared<Childless>(item);
        };
        test::Random random;
        std::vector<Path> paths{model.root()};
        for (auto i = 0; i < 60; ++i) {
            const auto parent = random.of(paths);
            const auto name = "item" + std::to_string(i);
            paths.push_back(model.make(parent, i % 3 ? "mesh" : "group", name)->path());
            if (random.below(6) == 0) {
                model.setGateway(paths.back(), nested.id());
            }
        }
    }

    class Childless : public FirstInterface
    {
    public:
        explicit Childless(SceneItem::Ptr item) : FirstInterface(nullptr), _item(std::move(item)) {}
        SceneItem::Ptr sceneItem() const override { return _item; }
        SceneItemList children() const override { return {}; }

    private:
        const SceneItem::Ptr _item;
    };

    /// Lets the scene offer the first interface only, until it ends.
    class Hidden
    {
        using Handler = std::shared_ptr<HierarchyHandler>;

    public:
        explicit Hidden(Rtid id) : _id(id)
        {
            const auto stub = std::make_shared<test::HierarchyStub>();
            stub->onHierarchy = [shown = _shown](const auto& item) {
                return std::make_shared<FirstInterface>(shown->hierarchy(item));
            };
            RunTimeMgr::instance().setHierarchyHandler(id, stub);
        }
        Hidden(const Hidden&) = delete;
        Hidden& operator=(const Hidden&) = delete;
        ~Hidden() { RunTimeMgr::instance().setHierarchyHandler(_id, _shown); }

    private:
        const Rtid _id;
        const Handler _shown = RunTimeMgr::instance().hierarchyHandler(_id);
    };

    /// The reference: what recursion over `children()` finds.
    void collect(const SceneItem::Ptr& item, std::size_t depth, std::vector<Told>& all) const
    {
        all.push_back(told(depth, *item));
        for (const auto& child : Hierarchy::hierarchy(item)->children()) {
            collect(child, depth + 1, all);
        }
    }

    void expectWalked() const
    {
        std::vector<Told> expected;
        collect(world, 0, expected);
        std::vector<Told> found;
        for (SubtreeWalk walk(world); walk.next();) {
            EXPECT_EQ(walk.name(), walk.path().back());
            EXPECT_EQ(walk.runTimeId(), walk.path().runTimeId());
            EXPECT_EQ(walk.item()->path(), walk.path());
            found.emplace_back(walk.depth(), PathString::string(walk.path()), walk.nodeType());
        }
        EXPECT_EQ(found, expected);
    }

    void expectRows() const
    {
        for (const auto& item : test::allUnder(world)) {
            const auto all = Hierarchy::hierarchy(item)->children();
            const auto hierarchy = Hierarchy_v4_2::hierarchyOrDefault(item);
            ASSERT_EQ(hierarchy->nbChildren(), all.size());
            EXPECT_FALSE(hierarchy->child(all.size()));
            EXPECT_FALSE(hierarchy->row(item->path()));
            EXPECT_EQ(test::pathsOf(hierarchy->childRange(0, 1000)), test::pathsOf(all));
            const auto infos = hierarchy->childInfos(1, all.size());
            ASSERT_EQ(infos.size(), all.empty() ? 0 : all.size() - 1);
            std::size_t row = 0;
            for (const auto& child : all) {
                EXPECT_EQ(*hierarchy->child(row), *child);
                EXPECT_EQ(hierarchy->row(child->path()), row);
                if (row > 0) {
                    EXPECT_EQ(infos[row - 1].name, child->path().back());
                    EXPECT_EQ(infos[row - 1].nodeType, child->nodeType());
                    EXPECT_EQ(infos[row - 1].runTimeId, child->runTimeId());
                }
                ++row;
            }
        }
    }

    test::Nested nested;
};

} // namespace

TEST_F(HierarchyRows, AreTheSameWhetherTheRunTimeOffersThemOrNot)
{
    expectRows();
    expectWalked();
    const Hidden hidden(runTime.id());
    EXPECT_FALSE(Hierarchy_v4_2::hierarchy(world));
    EXPECT_EQ(Hierarchy_v4_2::hierarchyOrDefault(world)->sceneItem(), world);
    expectRows();
    expectWalked();
}

TEST_F(HierarchyRows, AreWalkedPastWhatIsToBeSkipped)
{
    const auto expectSkipped = [this] {
        std::vector<std::string> groups;
        for (SubtreeWalk walk(world); walk.next();) {
            groups.push_back(walk.name().string());
            if (walk.depth() == 1) {
                walk.skipSubtree();
            }
        }
        auto expected = test::namesOf(Hierarchy::hierarchy(world)->children());
        expected.insert(expected.begin(), "world");
        EXPECT_EQ(groups, expected);
    };
    model.setGateway(model.root(), nested.id());
    expectSkipped();
    const Hidden hidden(runTime.id());
    expectSkipped();
}

TEST_F(HierarchyRows, AreWalkedWithoutWhatNoHandlerAnswersFor)
{
    EXPECT_FALSE(SubtreeWalk(nullptr).next());
    EXPECT_FALSE(SubtreeWalk(test::itemAt("/unknown")).next());
    model.setGateway(model.root(), nested.id());
    RunTimeMgr::instance().setHierarchyHandler(nested.id(), nullptr);
    auto nbWalked = 0;
    for (SubtreeWalk walk(world); walk.next(); ++nbWalked) {
        EXPECT_EQ(walk.runTimeId(), runTime.id());
    }
    EXPECT_EQ(nbWalked, 61);
}

TEST_F(HierarchyRows, FollowEditsOfManySiblings)
{
    test::Random random;
    const auto parent = model.make(model.root(), "group", "parent")->path();
    const auto elsewhere = model.make(model.root(), "group", "elsewhere")->path();
    const auto hierarchy = [&] { return Hierarchy_v4_2::hierarchy(model.item(parent)); };
    std::vector<SceneItem::Ptr> rows;
    for (auto i = 0; i < 3000; ++i) {
        const auto row = random.below(rows.size() + 1);
        const auto at = rows.begin() + static_cast<std::ptrdiff_t>(row);
        if (i < 1000 || random.below(2) == 0 || rows.empty()) {
            const auto made = model.make(elsewhere, "mesh", "item" + std::to_string(i));
            const auto insert = hierarchy()->insertChildCmd(made, at == rows.end() ? nullptr : *at);
            insert->execute();
            rows.insert(at, insert->insertedChild());
        } else if (at != rows.end()) {
            model.remove((*at)->path());
            rows.erase(at);
        }
        if (random.below(300) == 0) {
            std::reverse(rows.begin(), rows.end());
            ASSERT_TRUE(hierarchy()->reorder({rows.begin(), rows.end()}));
        }
        ASSERT_EQ(hierarchy()->nbChildren(), rows.size());
        if (!rows.empty()) {
            const auto asked = random.below(rows.size());
            ASSERT_EQ(hierarchy()->row(rows[asked]->path()), asked);
            ASSERT_EQ(*hierarchy()->child(asked), *rows[asked]);
        }
    }
}

TEST_F(HierarchyRows, AreWalkedAnewAfterAnEdit)
{
    SubtreeWalk walk(world);
    EXPECT_TRUE(walk.next());
    model.rename(Hierarchy::hierarchy(world)->children().front()->path(), "renamed");
    EXPECT_THROW(walk.next(), std::logic_error);
}

TEST_F(HierarchyRows, LeadToGatewaysInTheirOrder)
{
    // Many items and few gateways, so that the gateways are searched and not the items.
    for (auto i = 0; i < 200; ++i) {
        model.make(model.root(), "mesh", "more" + std::to_string(i));
    }
    for (auto i = 0; i < 20; ++i) {
        const auto each = test::allUnder(world);
        const auto& changed = each[each.size() - 1 - static_cast<std::size_t>(i)];
        if (changed->runTimeId() == runTime.id()) {
            model.setGateway(changed->path(), i % 3 == 0 ? 0 : nested.id());
        }
    }
    model.setGateway(model.make(at("/world/more7")->path(), "group", "deep")->path(), nested.id());
    model.move(at("/world/more7")->path(), at("/world/more3")->path());
    std::vector<std::string> expected;
    for (SubtreeWalk walk(world); walk.next();) {
        if (walk.depth() > 0 && walk.runTimeId() == runTime.id() && model.gateway(walk.path())) {
            expected.push_back(PathString::string(walk.path()));
        }
    }
    EXPECT_EQ(test::pathsOf(SceneSegmentHandler::findGatewayItems(model.root())), expected);
    EXPECT_EQ(test::pathsOf(SceneSegmentHandler::findGatewayItems(at("/world/more3")->path())),
              (std::vector<std::string>{"/world/more3/more7/deep"}));
}
