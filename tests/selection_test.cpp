#include <algorithm>
#include <cstddef>
#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/selection.h"

#include "paths.h"
#include "random.h"
#include "selectionModel.h"
#include "stubs.h"

using namespace Kiv_v4;
using test::expectError;
using test::itemAt;
using test::path;
using testing::ElementsAre;

namespace {

std::vector<std::string> paths(const Selection& selection)
{
    std::vector<std::string> result;
    for (const auto& selected : selection) {
        result.push_back(test::notation(selected->path()));
    }
    return result;
}

/// Writes down which hooks ran.
class Recorder : public Selection
{
public:
    using Selection::operator=;

    explicit Recorder(std::vector<std::string>& log) : _log(log) {}
    Recorder(Recorder&&) = default;

    void postAppend(const SceneItem::Ptr& appended) override { record("append", appended); }
    void postRemove(const SceneItem::Ptr& removed) override { record("remove", removed); }
    void postInsert(const SceneItem::Ptr& position, const SceneItem::Ptr& inserted) override
    {
        record("insert before " + test::notation(position->path()), inserted);
    }
    void postClear() override { _log.push_back("clear, left " + std::to_string(size())); }
    void postReplaceWith() override { _log.push_back("replace, now " + std::to_string(size())); }

private:
    void record(const std::string& what, const SceneItem::Ptr& subject)
    {
        _log.push_back(what + ": " + test::notation(subject->path()));
    }

    std::vector<std::string>& _log;
};

/// Reads a selection when it dies.
class Reader : public test::Item
{
public:
    Reader(const std::string& notation, const Selection& read)
        : Item(test::path(notation)), _read(read)
    {}
    ~Reader() override
    {
        EXPECT_FALSE(_read.contains(path()) || _read.trie().contains(path()));
        EXPECT_EQ(static_cast<std::ptrdiff_t>(_read.size()),
                  std::count_if(_read.begin(), _read.end(), [&](const auto& selected) {
                      return _read.contains(selected->path());
                  }));
    }

private:
    const Selection& _read;
};

} // namespace

TEST(Selection, RandomChangesGiveWhatTheyGiveOnAVector)
{
    test::Random random;
    for (int round = 0; round < 4; ++round) {
        test::ModelledSelection both(random);
        const auto firstPrefixQuestion = static_cast<int>(random.below(1'500));
        for (int step = 0; step < 1'500; ++step) {
            both.change();
            both.compareOne(step >= firstPrefixQuestion);
            if (step % 25 == 0) {
                both.compareAll();
            }
        }
    }
}

TEST(Selection, KeepsTheFirstOfTwoItemsOfOnePathWhateverItsSegments)
{
    const auto first = itemAt("/a|:b");
    Selection selection;
    EXPECT_TRUE(selection.append(first));
    EXPECT_FALSE(selection.append(itemAt("/a|:b")));
    EXPECT_FALSE(selection.append(itemAt("/a/b")));
    EXPECT_TRUE(selection.contains(path("/a/b")));
    EXPECT_EQ(selection.front(), first);
}

TEST(Selection, HoldsAnItemWithoutComponentsThatPrefixQuestionsDoNotSee)
{
    Selection selection;
    EXPECT_TRUE(selection.append(itemAt("/")));
    EXPECT_FALSE(selection.append(std::make_shared<test::Item>(Path())));
    EXPECT_TRUE(selection.contains(Path()));
    EXPECT_FALSE(selection.containsAncestor(path("/a")));
    EXPECT_FALSE(selection.containsDescendantInclusive(Path()));
    EXPECT_EQ(selection.itemsUnder(Path()).size(), 1U);
    EXPECT_TRUE(selection.remove(itemAt("/")));
    EXPECT_FALSE(selection.contains(Path()) || selection.trie().contains(Path()));
}

TEST(Selection, RunsAHookAfterEachChangeAndNoneWithoutAChange)
{
    std::vector<std::string> log;
    Recorder selection(log);
    selection.append(itemAt("/b"));
    selection.append(itemAt("/b"));
    selection.insert(itemAt("/b"), itemAt("/a"));
    selection.insert(nullptr, itemAt("/c"));
    selection.remove(itemAt("/x"));
    EXPECT_EQ(paths(selection), (std::vector<std::string>{"/a", "/b", "/c"}));
    // The argument is the selection's own pointer.
    selection.remove(*selection.begin());
    selection.doAppend(itemAt("/d"));
    selection.doRemove(itemAt("/d"));
    selection.replaceWith(Selection());
    selection.clear();
    EXPECT_THAT(log, ElementsAre("append: /b", "insert before /b: /a", "append: /c", "remove: /a",
                                 "replace, now 0", "clear, left 0"));
}

TEST(Selection, InsertingADuplicateAtAnUnknownPositionIsANoOp)
{
    Selection selection;
    selection.append(itemAt("/a"));
    EXPECT_FALSE(selection.insert(itemAt("/unknown"), itemAt("/a")));
    expectError<std::invalid_argument>([&] { selection.insert(itemAt("/unknown"), itemAt("/b")); },
                                       "Position item pointer not found in selection.");
    EXPECT_EQ(paths(selection), std::vector<std::string>{"/a"});
}

TEST(Selection, RefusesNullItemsAndUnknownOnes)
{
    Selection selection;
    const SceneItem::Ptr none;
    expectError<std::invalid_argument>([&] { selection.append(none); },
                                       "Cannot append null item pointer to selection.");
    expectError<std::invalid_argument>([&] { selection.remove(none); },
                                       "Cannot remove null item pointer from selection.");
    expectError<std::invalid_argument>([&] { selection.insert(itemAt("/unknown"), none); },
                                       "Cannot insert null item pointer into selection.");
    expectError<std::invalid_argument>([&] { (void)selection.next(none); },
                                       "Illegal null item pointer has no next item in selection.");
    expectError<std::invalid_argument>([&] { (void)selection.next(itemAt("/a")); },
                                       "Item pointer not found in selection.");
    expectError<std::invalid_argument>([&] { (void)selection.closestCommonAncestor(); },
                                       "No common ancestor in empty or invalid selection.");
}

TEST(Selection, ReplacedWithItselfIsLeftEmpty)
{
    std::vector<std::string> log;
    Recorder selection(log);
    const Selection& self = selection;
    selection.append(itemAt("/a"));
    selection.replaceWith(self);
    EXPECT_TRUE(selection.empty());
    selection.append(itemAt("/a"));
    selection = self;
    EXPECT_TRUE(selection.empty() && selection.trie().empty());
    EXPECT_EQ(log.back(), "replace, now 0");
}

TEST(Selection, IsReadByDestructorsOfTheItemsThatItDrops)
{
    using Change = std::function<void(Selection&, Selection&)>;
    const std::vector<Change> changes = {
        [](Selection& selection, Selection&) { selection.clear(); },
        [](Selection& selection, Selection& other) { selection.replaceWith(other); },
        [](Selection& selection, Selection& other) { selection = other; },
        [](Selection& selection, Selection& other) { selection = std::move(other); },
        [](Selection& selection, Selection&) { selection.remove(itemAt("/b")); },
        [](Selection&, Selection&) {}};
    for (const auto& change : changes) {
        Selection other;
        other.append(itemAt("/x"));
        Selection selection;
        for (const auto* notation : {"/a", "/b", "/b/c"}) {
            selection.append(std::make_shared<Reader>(notation, selection));
        }
        change(selection, other);
    }
}

TEST(Selection, MovedFromIsEmptyUsableAndHasRunItsHook)
{
    std::vector<std::string> log;
    Recorder source(log);
    source.append(itemAt("/a"));
    Selection target = std::move(static_cast<Selection&>(source));
    EXPECT_EQ(log.back(), "clear, left 0");
    EXPECT_TRUE(target.contains(path("/a")) && !source.contains(path("/a")));

    // The trie that a caller may hold follows the move as well.
    const auto& trie = target.trie();
    EXPECT_TRUE(source.append(itemAt("/b/c")));
    target = std::move(static_cast<Selection&>(source));
    EXPECT_TRUE(trie.containsDescendant(path("/b")) && !trie.contains(path("/a")));
    EXPECT_EQ(paths(target), std::vector<std::string>{"/b/c"});

    source = std::move(target);
    EXPECT_EQ(log.back(), "replace, now 1");
    EXPECT_TRUE(target.empty() && target.trie().empty());
    EXPECT_TRUE(target.append(itemAt("/z")) && trie.contains(path("/z")));
}

TEST(Selection, SurvivesWhateverACallerDoesToItsTrie)
{
    Selection selection;
    selection.append(itemAt("/a"));
    selection.append(itemAt("/b"));
    selection.trie().remove(path("/a"));
    selection.trie().add(path("/c"), {});
    EXPECT_TRUE(selection.contains(path("/a")) && !selection.contains(path("/c")));
    EXPECT_TRUE(selection.remove(itemAt("/a")) && selection.append(itemAt("/c")));
    EXPECT_EQ(paths(selection), (std::vector<std::string>{"/b", "/c"}));
}

TEST(Selection, AsksTheRunTimeForTheClosestCommonAncestor)
{
    const auto handler = std::make_shared<test::HierarchyStub>();
    handler->onCreateItem = [](const Path& made) { return std::make_shared<test::Item>(made); };
    const auto runTime = test::registered("common ancestors", handler);
    const auto at = [&](const std::string& text) {
        return std::make_shared<test::Item>(Path(PathSegment(text, runTime, '/')));
    };
    Selection selection;
    selection.append(at("/a/b/c"));
    EXPECT_EQ(*selection.closestCommonAncestor(), *at("/a/b"));
    selection.append(at("/a/b/d"));
    EXPECT_EQ(*selection.closestCommonAncestor(), *at("/a/b"));
    selection.append(at("/a/b"));
    EXPECT_EQ(*selection.closestCommonAncestor(), *at("/a"));
    selection.append(at("/x"));
    EXPECT_EQ(selection.closestCommonAncestor(), nullptr);
    RunTimeMgr::instance().unregister(runTime);
}
