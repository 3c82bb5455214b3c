#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>

#include "kiv/compositeUndoableCommand.h"
#include "kiv/host/transaction.h"
#include "kiv/host/undoHistory.h"
#include "kiv/runTimeCommand.h"
#include "kiv/setValueCommands.h"
#include "kiv/undoableCommandGuard.h"

#include "callback.h"
#include "paths.h"
#include "random.h"

using namespace Kiv_v4;
using host::Transaction;
using host::UndoHistory;
using host::UndoHistoryChanged;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Adds a letter to a text; throws where told to.
class Letter : public UndoableCommand, public RunTimeCommand
{
public:
    Letter(std::string& text, char letter, std::string throwsOn = {}, Rtid owner = 0)
        : _text(text), _letter(letter), _throwsOn(std::move(throwsOn)), _owner(owner)
    {}

    [[nodiscard]] std::string commandString() const override { return {_letter}; }
    [[nodiscard]] bool belongsTo(Rtid runTimeId) const override { return runTimeId == _owner; }

    void undo() override
    {
        failOn("undo");
        ASSERT_TRUE(!_text.empty() && _text.back() == _letter) << _text << " without " << _letter;
        _text.pop_back();
    }

    void redo() override
    {
        failOn("redo");
        _text += _letter;
    }

private:
    void failOn(const std::string& what) const
    {
        if (what == _throwsOn) {
            throw std::runtime_error(what + " fails");
        }
    }

    std::string& _text;
    const char _letter;
    const std::string _throwsOn;
    const Rtid _owner;
};

/// Sets a number, as the commands of a drag do.
class SetNumber : public SetIntUndoableCommand
{
public:
    SetNumber(const Path& path, int& number, int value)
        : SetIntUndoableCommand(path), _number(number), _value(value)
    {}

    [[nodiscard]] std::string commandString() const override { return "Set"; }
    void undo() override { _number = *std::exchange(_before, std::nullopt); }
    void redo() override { _before = std::exchange(_number, _value); }
    bool set(int value) override
    {
        _value = value;
        redo();
        return true;
    }

private:
    int& _number;
    int _value;
    std::optional<int> _before;
};

struct History : testing::Test
{
    History() { UndoableCommandMgr::initializeInstance(history); }
    ~History() override { UndoableCommandMgr::initializeInstance(nullptr); }

    UndoableCommand::Ptr letter(char name, const std::string& throwsOn = {}, Rtid owner = 0)
    {
        return std::make_shared<Letter>(text, name, throwsOn, owner);
    }

    static void execute(const UndoableCommand::Ptr& command)
    {
        UndoableCommandMgr::instance().executeCmd(command);
    }

    void type(const std::string& letters)
    {
        for (const auto name : letters) {
            execute(letter(name));
        }
    }

    void drag(const std::string& item, std::initializer_list<int> values)
    {
        for (const auto value : values) {
            execute(std::make_shared<SetNumber>(test::path(item), number, value));
        }
    }

    std::string text;
    int number = 0;
    const std::shared_ptr<UndoHistory> history = std::make_shared<UndoHistory>();
};

} // namespace

TEST_F(History, TellsItsObserversOfEachChangeOnceItIsComplete)
{
    std::vector<std::string> seen;
    const auto menu = test::Callback::make([&](const Notification& notification) {
        const auto change = dynamic_cast<const UndoHistoryChanged&>(notification).change();
        seen.push_back(std::to_string(change) + history->undoText() + "|" + history->redoText() +
                       (history->isClean() ? "" : "*"));
    });
    history->addObserver(menu);
    type("ab");
    history->undo();
    history->setClean();
    history->redo();
    history->skipUndo();
    execute(CompositeUndoableCommand::create({nullptr, CompositeUndoableCommand::create({})}));
    {
        const UndoableCommandGuard guard("empty");
        UndoableCommandGuard::setSuccess();
    }
    history->clear();
    history->clear();
    EXPECT_THAT(seen, ElementsAre("0a|*", "0b|*", "2a|b*", "5a|b", "3b|*", "4a|*", "4|*"));
}

TEST_F(History, KnowsTheCleanStateForAsLongAsItCanBeReached)
{
    type("abc");
    history->setClean();
    history->undo();
    EXPECT_FALSE(history->isClean());
    history->redo();
    EXPECT_TRUE(history->isClean());
    history->undo();
    type("x");
    history->undo();
    EXPECT_FALSE(history->isClean()) << "the way to it was given up";
    history->setClean();
    history->setLimit(1);
    EXPECT_TRUE(history->isClean());
    type("yz");
    history->undo();
    EXPECT_FALSE(history->isClean()) << "it lies before the limit";

    history->setClean();
    type("q");
    history->skipUndo();
    EXPECT_FALSE(history->isClean()) << "the letter is there";
}

TEST_F(History, GivesAWayOnPastAnEntryThatCannotBeUndone)
{
    type("a");
    execute(letter('b', "undo"));
    EXPECT_THROW(history->undo(), std::runtime_error);
    EXPECT_TRUE(history->skipUndo());
    text.pop_back(); // whatever has to be done by hand
    EXPECT_TRUE(history->undo());
    EXPECT_EQ(text, "");
    EXPECT_TRUE(history->skipRedo());
    EXPECT_FALSE(history->skipRedo() || history->skipUndo());
}

TEST_F(History, MakesOneEntryOfADrag)
{
    drag("/w/a", {1});
    {
        const UndoHistory::Merging drags(*history);
        drag("/w/a", {2, 3, 4});
        drag("/w/b", {5, 6});
        type("x");
        drag("/w/b", {7});
        history->setClean();
        drag("/w/b", {8, 9});
    }
    drag("/w/b", {10});
    EXPECT_THAT(history->entries(), ElementsAre("Set", "Set", "Set", "x", "Set", "Set", "Set"));
    std::vector<int> values;
    while (history->undo()) {
        values.push_back(number);
    }
    EXPECT_THAT(values, ElementsAre(9, 7, 6, 6, 4, 1, 0));
    while (history->redo()) {
    }
    EXPECT_EQ(number, 10);

    int other = 0;
    const UndoHistory::Merging drags(*history);
    for (const auto value : {20, 21, 22}) { // of two items at once
        execute(CompositeUndoableCommand::create(
            {std::make_shared<SetNumber>(test::path("/w/a"), number, value),
             std::make_shared<SetNumber>(test::path("/w/b"), other, value)}));
    }
    history->undo();
    EXPECT_EQ(number, 10);
    EXPECT_EQ(other, 0);
}

TEST_F(History, LosesOnlyTheCommandsOfARunTimeThatLeaves)
{
    const auto gone = test::path("/w").runTimeId();
    type("a");
    drag("/w/a", {1});
    execute(letter('b', {}, gone));
    {
        const UndoableCommandGuard guard("both");
        execute(letter('c'));
        execute(letter('d', {}, gone));
        UndoableCommandGuard::setSuccess();
    }
    history->setClean();
    history->undo();
    EXPECT_EQ(history->dropRunTime(gone), 3U);
    EXPECT_EQ(history->dropRunTime(gone), 0U);
    EXPECT_THAT(history->entries(), ElementsAre("a", "both"));
    text = "a"; // the other run-time's letter went with it
    history->redo();
    EXPECT_EQ(text, "ac");
    EXPECT_TRUE(history->isClean());
}

TEST_F(History, TakesTransactionsWhollyOrNotAtAll)
{
    type("a");
    try {
        Transaction edits("fails");
        edits.run(letter('b'));
        type("c"); // through the manager
        {
            Transaction inner("inner");
            inner.run(letter('d'));
            inner.commit();
            EXPECT_THROW(inner.run(letter('x')), std::logic_error);
        }
        {
            const UndoableCommandGuard guard("guard");
            type("e");
            UndoableCommandGuard::setSuccess();
        }
        EXPECT_EQ(text, "abcde");
        EXPECT_THROW(edits.run(nullptr), std::runtime_error);
        edits.run(CompositeUndoableCommand::create({letter('f'), letter('g', "redo")}));
        FAIL() << "it throws in the middle";
    } catch (const std::runtime_error&) {
        EXPECT_EQ(text, "a");
    }
    EXPECT_THAT(history->entries(), ElementsAre("a"));

    {
        const UndoableCommandGuard guard("around");
        Transaction edits("edits");
        EXPECT_EQ(edits.runFor(letter('b'))->commandString(), "b");
        edits.run(letter('c'));
        edits.commit();
        UndoableCommandGuard::setSuccess();
    }
    Transaction("nothing").commit();
    EXPECT_THAT(history->entries(), ElementsAre("a", "around"));
    history->undo();
    EXPECT_EQ(text, "a");
}

TEST_F(History, RollsBackAsFarAsPossibleWhenAnUndoThrows)
{
    auto outer = std::make_unique<Transaction>("outer");
    auto inner = std::make_unique<Transaction>("inner");
    outer->run(letter('a'));
    outer->run(letter('b', "undo"));
    inner->run(letter('c'));
    text.pop_back();
    text.pop_back();
    testing::internal::CaptureStderr();
    outer.reset(); // in any order
    EXPECT_EQ(text, "");
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::HasSubstr("outer cannot be taken back: undo fails\n"));
    text = "c";
    inner.reset();
    EXPECT_EQ(text, "");
    type("d");
    EXPECT_THAT(history->entries(), ElementsAre("d")) << "no transaction is open";
}

TEST_F(History, AgreesWithAModelUnderRandomUse)
{
    test::Random random;
    std::vector<std::string> states{""}; // where undo and redo lead
    std::size_t done = 0;
    std::optional<std::size_t> clean = 0;
    for (auto round = 0; round < 3000; ++round) {
        switch (random.below(6)) {
        case 0:
            EXPECT_EQ(history->undo(), done > 0);
            done -= done > 0 ? 1 : 0;
            break;
        case 1:
            EXPECT_EQ(history->redo(), done + 1 < states.size());
            done += done + 1 < states.size() ? 1 : 0;
            break;
        case 2:
            if (random.below(4) == 0) {
                history->setClean();
                clean = done;
            }
            break;
        default: {
            Transaction edits("edits");
            for (auto left = random.below(4); left > 0; --left) {
                edits.run(letter(static_cast<char>('a' + random.below(26))));
            }
            if (!edits.empty() && random.below(3) > 0) {
                edits.commit();
                clean = clean > done ? std::nullopt : clean;
                states.resize(++done);
                states.push_back(text);
            }
        }
        }
        ASSERT_EQ(text, states[done]);
        ASSERT_EQ(history->nbDone(), done);
        ASSERT_EQ(history->isClean(), clean == done);
    }
}
