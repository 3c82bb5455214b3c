// What a host watches, records, does again and looks into.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/host/inspection.h"
#include "kiv/host/recorder.h"
#include "kiv/host/sceneWatch.h"
#include "kiv/host/undoHistory.h"
#include "kiv/observableSelection.h"
#include "kiv/scene.h"
#include "kiv/sceneItemOps.h"
#include "kiv/transform3d.h"
#include "kiv/undoableCommandMgr.h"

#include "callback.h"
#include "memoryScene.h"

using namespace Kiv_v4;

namespace {

using host::Record;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

struct Recording : test::MemoryScene
{
    Recording()
    {
        UndoableCommandMgr::initializeInstance(history);
        GlobalSelection::initializeInstance(std::make_shared<ObservableSelection>());
        for (const auto* name : {"a", "b"}) {
            model.make(model.root(), "mesh", name);
        }
    }
    ~Recording() override
    {
        history->clear();
        GlobalSelection::initializeInstance(nullptr);
        UndoableCommandMgr::initializeInstance(nullptr);
    }

    /// What the host of these tests can do.
    void run(const std::string& input) const
    {
        if (input == "undo") {
            history->undo();
            return;
        }
        const auto item = at("/world/" + input.substr(input.find(' ') + 1));
        if (!item) {
            throw std::runtime_error("no such item");
        }
        UndoableCommandMgr::instance().executeCmd(
            input.starts_with("rm") ? SceneItemOps::sceneItemOps(item)->deleteItemCmd()
                                    : Transform3d::transform3d(item)->translateCmd(1, 2, 3));
    }

    /// The lines of a recording of these inputs.
    std::string recorded(const std::vector<std::string>& inputs)
    {
        std::string lines;
        host::Recorder recorder(
            [&lines](const Record& record) { lines += host::jsonLine(record) + "\n"; }, world,
            history);
        for (const auto& text : inputs) {
            host::Recorder::Input input(recorder, text);
            try {
                run(text);
            } catch (const std::exception& error) {
                input.failed(error.what());
            }
        }
        return lines;
    }

    std::vector<Record> read(const std::string& lines) const
    {
        std::istringstream stream(lines);
        return host::readRecords(stream);
    }

    const std::shared_ptr<host::UndoHistory> history = std::make_shared<host::UndoHistory>();
};

TEST_F(Recording, TellsWhatHappensWithItsCause)
{
    std::vector<std::string> texts;
    for (const auto& record : read(recorded({"move a", "rm a", "undo", "rm c"}))) {
        texts.push_back(std::to_string(record.cause) + " " + record.kind + " " + record.text);
    }
    EXPECT_THAT(texts.front(), HasSubstr("0 scene 3 items, "));
    texts.erase(texts.begin());
    EXPECT_THAT(texts, Contains("2 notification transform changed: /world/a"));
    EXPECT_THAT(texts, Contains(testing::StartsWith("2 entered ")));
    EXPECT_THAT(texts, Contains("0 input undo"));
    EXPECT_THAT(texts, Contains(testing::ContainsRegex("^[0-9]+ undone ")));
    EXPECT_THAT(texts.back(), testing::EndsWith(" error no such item"));
}

TEST_F(Recording, DoneAgainTellsWhereItGoesAnotherWay)
{
    const std::vector<std::string> inputs{"move a", "rm b", "undo"};
    const auto records = read(recorded(inputs));
    const auto again = [&](const std::string& skipped = {}) {
        std::vector<std::string> found;
        history->clear();
        const auto runInput = [&](const std::string& text) {
            if (text != skipped) {
                run(text);
            }
        };
        for (const auto& one : host::replay(records, runInput, world, history)) {
            found.push_back(one.input.text + ": " + (one.recorded ? one.recorded->text : "-") +
                            " / " + (one.now ? one.now->text : "-"));
        }
        return found;
    };
    EXPECT_THAT(again(), IsEmpty());
    SceneItemOps::sceneItemOps(at("/world/a"))->deleteItem();
    const auto found = again();
    ASSERT_EQ(found.size(), 2u);
    EXPECT_THAT(found[0], HasSubstr("3 items")) << "the scene is another";
    EXPECT_EQ(found[1], "move a: transform changed: /world/a / no such item");
    EXPECT_THAT(again("undo"), Contains(MatchesRegex("undo: .+ / -")));
}

TEST_F(Recording, IsLinesThatAnyTextPasses)
{
    const Record record{7, 3, 0.25, "input", "a \"quote\", a \\ and\na line, \xC3\xA9 \x01"};
    const auto line = host::jsonLine(record);
    EXPECT_EQ(line.find('\n'), line.npos);
    const auto again = read(line + "\n\n").front();
    EXPECT_EQ(std::tie(again.id, again.cause, again.time, again.kind, again.text),
              std::tie(record.id, record.cause, record.time, record.kind, record.text));
    EXPECT_EQ(read(host::jsonLine({1, 0, 0, "log", "\xFF"})).front().text, "\xEF\xBF\xBD");
    EXPECT_EQ(read(R"({"text":"\t\/\u0041"})").front().text, "\t/A") << "as others write it";
    for (const auto* wrong :
         {R"({"text":"\x"})", "{", "[]", "{\"id\":}", "{\"kind\":\"x}", "{\"more\":1}"}) {
        EXPECT_THROW(read(wrong), std::runtime_error) << wrong;
    }
}

TEST_F(Recording, InspectionFindsWhatWasLeftBehind)
{
    const auto clean = host::inspect(world);
    EXPECT_EQ(clean.nbItems, 3u);
    EXPECT_GT(clean.nbNames, 0u);
    ASSERT_EQ(clean.runTimes.size(), 1u);
    EXPECT_EQ(clean.runTimes[0].name, "memory");
    EXPECT_THAT(clean.runTimes[0].handlers, Contains("hierarchy"));
    EXPECT_THAT(clean.leftovers, IsEmpty());

    auto dying = test::Callback::make([](const auto&) {});
    const auto living = test::Callback::make([](const auto&) {});
    Transform3d::addObserver(at("/world/a"), dying);
    Transform3d::addObserver(at("/world/b"), living);
    dying.reset();
    SceneItemOps::sceneItemOps(at("/world/b"))->deleteItem();
    EXPECT_THAT(host::inspect(world).leftovers,
                testing::UnorderedElementsAre(
                    "observers of /world/a by Transform3d that died without being removed",
                    "observers of /world/b by Transform3d, which is gone"));
}

TEST_F(Recording, AWatchFollowsItemsAndLeavesNothingBehind)
{
    std::vector<std::string> lines;
    {
        const host::SceneWatch watch(
            [&lines](const Notification& told) { lines.push_back(host::textOf(told)); }, world);
        const auto renamed =
            SceneItemOps::sceneItemOps(at("/world/a"))->renameItem(PathComponent("c")).item;
        SceneItemOps::sceneItemOps(at("/world/b"))->deleteItem();
        lines.clear();
        Transform3d::transform3d(renamed)->translate(1, 2, 3);
        EXPECT_THAT(lines, ElementsAre("transform changed: /world/c"));
        EXPECT_THAT(host::inspect(world).leftovers, IsEmpty());
        EXPECT_EQ(host::inspect(world).observedItems.size(), 2u);
    }
    EXPECT_THAT(host::inspect(world).observedItems, IsEmpty());
    EXPECT_EQ(Scene::instance().nbObservers(), 0u);
}

} // namespace
