#include <gtest/gtest.h>

#include "kiv/kit/bases.h"
#include "kiv/kit/command.h"
#include "kiv/kit/handlerBases.h"
#include "kiv/kit/handlers.h"
#include "kiv/kit/names.h"
#include "kiv/runTimeCommand.h"
#include "kiv/sceneItemOps.h"
#include "kiv/uniqueName.h"

#include "kitBoxes.h"
#include "random.h"

namespace {

using namespace Kiv_v4;
using test::Kit;

TEST(KitNames, AnIndexGivesTheNamesThatCountingUpGives)
{
    test::Random random;
    const std::vector<std::string> stems{"a", "", "a0", "b 7x"};
    kit::NameIndex index;
    std::set<std::string> model;
    const auto someName = [&] {
        const auto number = random.below(4) == 0 ? "" : std::to_string(random.below(30));
        return random.of(stems) + number;
    };
    for (auto i = 0; i < 20000; ++i) {
        const auto name = someName();
        const auto expected =
            uniqueName(name, [&](const auto& tried) { return model.count(tried) != 0; });
        ASSERT_EQ(index.uniqueName(name), expected);
        if (random.below(2) == 0) {
            ASSERT_EQ(index.insert(expected), model.insert(expected).second);
        } else {
            ASSERT_EQ(index.erase(name), model.erase(name) != 0);
        }
        ASSERT_EQ(index.size(), model.size());
    }
    EXPECT_EQ(kit::fitName("a/\nb,c", "/,"), "a_b_c");
    EXPECT_EQ(kit::fitName("", "_"), "-");
}

TEST(KitCommand, RunsItsFunctionsAndAnnouncesWhatDidNotThrow)
{
    auto value = 0;
    auto announced = 0;
    const auto command = kit::command(
        7, "Set", [&] { value = 1; },
        [&] { value = value == 1 ? 0 : throw std::logic_error("lost"); }, [&] { ++announced; });
    EXPECT_EQ(command->commandString(), "Set");
    EXPECT_TRUE(std::dynamic_pointer_cast<RunTimeCommand>(command)->belongsTo(7));
    EXPECT_EQ(value, 0);
    command->execute();
    command->undo();
    command->redo();
    EXPECT_EQ(value, 1);
    EXPECT_EQ(announced, 3);
    value = 2;
    EXPECT_THROW(command->undo(), std::logic_error);
    EXPECT_EQ(announced, 3);
}

TEST_F(Kit, RandomEditsOfATreeAreAnnouncedUndoneAndRedoneExactly)
{
    test::Random random;
    std::vector<UndoableCommand::Ptr> commands;
    std::vector<std::vector<std::string>> states{state()};
    const auto someItem = [&] {
        const auto items = test::allUnder(item("/top"));
        return items[random.below(items.size())];
    };
    const auto someCommand = [&]() -> UndoableCommand::Ptr {
        const auto chosen = someItem();
        const auto hierarchy = Hierarchy::hierarchy(chosen);
        const auto ops = SceneItemOps::sceneItemOps(chosen);
        const PathComponent name(random.below(2) == 0 ? "x" : "y/9");
        switch (random.below(8)) {
        case 0:
            return ops->deleteItemCmd();
        case 1:
            return ops->duplicateItemCmd();
        case 2:
            return ops->renameItemCmd(name);
        case 3: {
            auto children = hierarchy->children();
            children.reverse();
            return hierarchy->reorderCmd(children);
        }
        case 4: {
            const auto children = hierarchy->children();
            return hierarchy->insertChildCmd(someItem(),
                                             children.empty() ? nullptr : children.back());
        }
        case 5:
            return hierarchy->insertChildCmd(someItem(), nullptr);
        default:
            return hierarchy->createChildCmd(random.below(3) == 0 ? "leaf" : "box", name);
        }
    };
    for (auto step = 0; step < 500; ++step) {
        const auto before = received;
        const auto command = someCommand();
        ASSERT_EQ(state(), states.back()) << "a command changes nothing when it is made";
        if (command && state().size() < 200) {
            command->execute();
            commands.push_back(command);
            states.push_back(state());
            const auto& last = states[states.size() - 2];
            ASSERT_TRUE(received == before + 1 || (received == before && states.back() == last))
                << command->commandString();
            ASSERT_EQ(std::vector<std::string>(outline.begin(), outline.end()), [&] {
                auto sorted = states.back();
                std::sort(sorted.begin(), sorted.end());
                return sorted;
            }()) << command->commandString();
        }
    }
    for (auto round = 0; round < 2; ++round) {
        for (auto i = commands.size(); i-- > 0;) {
            commands[i]->undo();
            ASSERT_EQ(state(), states[i]) << commands[i]->commandString();
        }
        for (std::size_t i = 0; i < commands.size(); ++i) {
            commands[i]->redo();
            ASSERT_EQ(state(), states[i + 1]) << commands[i]->commandString();
        }
    }
}

TEST_F(Kit, WhatATreeDoesNotTakeIsRefusedAndStaleItemsAnswer)
{
    const auto leaf = made("/top", "leaf", "leaf");
    const auto box = made("/top", "box");
    const auto inner = made("/top/box", "inner");
    EXPECT_FALSE(Hierarchy::hierarchy(leaf)->createChildCmd("box", PathComponent("x")));
    EXPECT_FALSE(Hierarchy::hierarchy(leaf)->insertChildCmd(box, nullptr));
    EXPECT_FALSE(Hierarchy::hierarchy(inner)->insertChildCmd(box, nullptr)) << "into itself";
    EXPECT_FALSE(Hierarchy::hierarchy(item("/top"))->reorderCmd({box, box}));
    EXPECT_FALSE(SceneItemOps::sceneItemOps(item("/top"))->deleteItemCmd());
    EXPECT_EQ(*Hierarchy::hierarchy(leaf)->defaultParent(), *item("/top"));

    const auto removal = SceneItemOps::sceneItemOps(box)->deleteItemCmd();
    const auto renaming = SceneItemOps::sceneItemOps(inner)->renameItemCmd(PathComponent("z"));
    removal->execute();
    EXPECT_THROW(renaming->execute(), std::invalid_argument);
    EXPECT_FALSE(item("/top/box/inner"));
    EXPECT_TRUE(Hierarchy::hierarchy(inner)->children().empty());
    EXPECT_FALSE(Hierarchy::hierarchy(inner)->defaultParent() &&
                 Hierarchy::hierarchy(inner)->createChildCmd("box", PathComponent("x")));
    EXPECT_FALSE(SceneItemOps::sceneItemOps(inner)->renameItemCmd(PathComponent("z")));
    made("/top", "box");
    EXPECT_THROW(removal->undo(), std::invalid_argument) << "the name is taken";
}

/// Items named "gate" lead into the run-time 99.
TEST_F(Kit, ATreeOfNodesMayBeginBelowOtherItems)
{
    test::BoxTree deep(id, "shelf/top");
    deep.put(deep.root() + "a", deep.make("leaf"), 0);
    EXPECT_EQ(deep.nodeType(deep.root()), "box");
    EXPECT_EQ(deep.nodeType(deep.root() + "a"), "leaf");
    EXPECT_EQ(deep.nodeType(deep.root() + "top"), "");
    EXPECT_FALSE(deep.item(deep.root().pop()));
}

class Gates : public kit::SceneSegmentHandlerBase
{
public:
    Rtid target(const Path& path) const override { return path.back().string() == "gate" ? 99 : 0; }
};

TEST_F(Kit, GatewaysAreFoundFromWhereTheyLead)
{
    made("/top", "a");
    made("/top/a", "gate");
    made("/top/a/gate", "gate");
    Gates gates;
    EXPECT_EQ(test::pathsOf(gates.gatewayItems(item("/top")->path())),
              std::vector<std::string>{"/top/a/gate"});
    EXPECT_TRUE(gates.gatewayItems(item("/top")->path(), 98).empty());
    EXPECT_TRUE(gates.isGatewayItem(item("/top/a/gate")->path()));
    EXPECT_EQ(kit::UIInfoHandlerBase(id).runTimeLabel(), "kit");
    EXPECT_TRUE(kit::NodeDefBase("box").createNodeCmd(item("/top/a"), PathComponent("b")));
}

} // namespace
