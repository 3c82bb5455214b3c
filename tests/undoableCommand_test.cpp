#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "kiv/batchCompositeCommand.h"
#include "kiv/compositeUndoableCommand.h"
#include "kiv/handleAssert.h"
#include "kiv/host/undoHistory.h"
#include "kiv/memory/runTime.h"
#include "kiv/runTimeMgr.h"
#include "kiv/selection.h"
#include "kiv/undoableCommandGuard.h"

#include "stubs.h"

using namespace Kiv_v4;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Journal = std::vector<std::string>;

/// Writes down what is done with it; throws where told to.
class Noted : public UndoableCommand
{
public:
    Noted(Journal& journal, std::string name, std::string throwsOn = {})
        : _journal(journal), _name(std::move(name)), _throwsOn(std::move(throwsOn))
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }
    void undo() override { note("undo"); }
    void redo() override { note("redo"); }

private:
    void note(const std::string& what)
    {
        if (what == _throwsOn) {
            throw std::runtime_error(_name + " fails");
        }
        _journal.push_back(what + " " + _name);
    }

    Journal& _journal;
    const std::string _name;
    const std::string _throwsOn;
};

struct Commands : testing::Test
{
    Commands() { UndoableCommandMgr::initializeInstance(history); }
    ~Commands() override { UndoableCommandMgr::initializeInstance(nullptr); }

    UndoableCommand::Ptr noted(const std::string& name, const std::string& throwsOn = {})
    {
        return std::make_shared<Noted>(journal, name, throwsOn);
    }

    static void execute(const UndoableCommand::Ptr& command)
    {
        UndoableCommandMgr::instance().executeCmd(command);
    }

    Journal journal;
    const std::shared_ptr<host::UndoHistory> history = std::make_shared<host::UndoHistory>(4);
};

} // namespace

TEST_F(Commands, RunInTheirOrderAndBackwardsOnUndoInAComposite)
{
    const auto composite = CompositeUndoableCommand::create({noted("a"), nullptr, noted("b")});
    composite->append(noted("c"));
    composite->execute();
    composite->undo();
    composite->redo();
    EXPECT_THAT(journal, ElementsAre("redo a", "redo b", "redo c", "undo c", "undo b", "undo a",
                                     "redo a", "redo b", "redo c"));
    EXPECT_EQ(composite->cmdsList().size(), 4U);

    journal.clear();
    CompositeUndoableCommand failing({noted("a"), noted("b", "redo"), noted("c")});
    EXPECT_THROW(failing.execute(), std::runtime_error);
    EXPECT_THAT(journal, ElementsAre("redo a")) << "nothing is rolled back";
}

TEST_F(Commands, LeaveNoEntryUnderGuardsThatFail)
{
    {
        UndoableCommandGuard forgotten("no success");
        execute(noted("a"));
    }
    {
        UndoableCommandGuard outer("outer");
        UndoableCommandGuard::setSuccess();
        {
            UndoableCommandGuard inner("fails");
            execute(noted("b"));
        }
    }
    try {
        UndoableCommandGuard guard("thrown out of");
        execute(noted("c"));
        UndoableCommandGuard::setSuccess();
        execute(noted("d", "redo"));
        FAIL() << "the command throws";
    } catch (const std::runtime_error&) {
        // as it should
    }
    EXPECT_THAT(history->entries(), IsEmpty());
    EXPECT_EQ(&UndoableCommandMgr::instance(), history.get());
    EXPECT_THAT(journal, ElementsAre("redo a", "redo b", "redo c")) << "they ran all the same";
    testing::internal::CaptureStderr();
    EXPECT_THROW(UndoableCommandGuard::setSuccess(), AssertionException);
    testing::internal::GetCapturedStderr();
}

TEST_F(Commands, AreAnEntryOfAGuardThatBeginsAndEndsWhileAnExceptionIsOnItsWay)
{
    struct Cleanup
    {
        ~Cleanup()
        {
            UndoableCommandGuard guard("clean up");
            Commands::execute(_command);
            UndoableCommandGuard::setSuccess();
        }

        const UndoableCommand::Ptr _command;
    };
    try {
        const Cleanup cleanup{noted("a")};
        throw std::runtime_error("on its way");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(history->entries().size(), 1U);
    }
}

TEST_F(Commands, AreForgottenWhenTheManagerIsClearedUnderTheirGuard)
{
    struct Clear : UndoableCommand
    {
        void undo() override {}
        void redo() override { UndoableCommandMgr::initializeInstance(nullptr); }
    };
    for (const auto installsAgain : {true, false}) {
        {
            const UndoableCommandGuard outer("outer");
            const UndoableCommandGuard inner("inner");
            UndoableCommandGuard::setSuccess();
            execute(std::make_shared<Clear>());
            UndoableCommandMgr::initializeInstance(installsAgain ? history : nullptr);
        }
        if (!installsAgain) {
            UndoableCommandMgr::initializeInstance(history);
        }
    }
    EXPECT_THAT(history->entries(), IsEmpty());
}

TEST_F(Commands, AreManagedByTheOneInstalledManager)
{
    const auto other = std::make_shared<UndoableCommandMgr>();
    test::expectError<std::invalid_argument>(
        [&] { UndoableCommandMgr::initializeInstance(other); },
        "Cannot initialize the command manager instance more than once.");
    EXPECT_EQ(&UndoableCommandMgr::instance(), history.get());
}

TEST_F(Commands, AreKeptInTheHistoryUpToItsLimit)
{
    for (const auto* name : {"a", "b", "c", "d", "e"}) {
        execute(noted(name));
    }
    EXPECT_THAT(history->entries(), ElementsAre("b", "c", "d", "e"));
    history->undo();
    history->undo();
    EXPECT_EQ(history->nbDone(), 2U);
    history->setLimit(3);
    EXPECT_THAT(history->entries(), ElementsAre("c", "d", "e"));
    execute(noted("f"));
    EXPECT_THAT(history->entries(), ElementsAre("c", "f")) << "what was undone is gone";
    EXPECT_FALSE(history->redo());

    EXPECT_THROW(execute(noted("fails", "redo")), std::runtime_error);
    execute(noted("g", "undo"));
    EXPECT_THROW(history->undo(), std::runtime_error);
    EXPECT_THAT(history->entries(), ElementsAre("c", "f", "g"));
    EXPECT_EQ(history->nbDone(), 3U);
    history->clear();
    EXPECT_FALSE(history->canUndo() || history->canRedo());
    EXPECT_THROW(history->setLimit(0), std::invalid_argument);
}

namespace {

class NotedWrapper : public CodeWrapper
{
public:
    NotedWrapper(Journal& journal, std::string name, bool cleanupThrows)
        : _journal(journal), _name(std::move(name)), _cleanupThrows(cleanupThrows)
    {}

    void prelude(const std::string& subOperation) override
    {
        _journal.push_back("open " + _name + " for " + subOperation);
    }

    void cleanup(const std::string& subOperation) override
    {
        _journal.push_back("close " + _name + " for " + subOperation);
        if (_cleanupThrows) {
            throw std::runtime_error(_name);
        }
    }

private:
    Journal& _journal;
    const std::string _name;
    const bool _cleanupThrows;
};

class NotedWrapperHandler : public CodeWrapperHandler
{
public:
    NotedWrapperHandler(Journal& journal, std::string name, bool cleanupThrows = false)
        : _wrapper(std::make_shared<NotedWrapper>(journal, std::move(name), cleanupThrows))
    {}

    [[nodiscard]] bool wraps(const std::string& operationName) const override
    {
        return operationName == "delete";
    }

    CodeWrapper::Ptr createCodeWrapper(const Selection&, const std::string&) override
    {
        return _wrapper;
    }

private:
    const CodeWrapper::Ptr _wrapper;
};

} // namespace

TEST_F(Commands, AreWrappedByEachRunTimeThatTheirSelectionTouches)
{
    const memory::RunTime one("one", "one");
    const memory::RunTime two("two", "two");
    auto& manager = RunTimeMgr::instance();
    manager.setCodeWrapperHandler(one.id(), std::make_shared<NotedWrapperHandler>(journal, "one"));
    manager.setCodeWrapperHandler(two.id(),
                                  std::make_shared<NotedWrapperHandler>(journal, "two", true));
    Selection selection;
    selection.append(one.model().item(one.model().root()));
    selection.append(two.model().item(two.model().root()));
    selection.append(one.model().make(one.model().root(), "mesh", "cube"));

    const auto batch = BatchCompositeCommand::create(selection, "delete");
    batch->append(noted("a"));
    EXPECT_THROW(batch->execute(), std::runtime_error) << "from the clean-up of two";
    EXPECT_THAT(journal, ElementsAre("open one for execute", "open two for execute", "redo a",
                                     "close two for execute", "close one for execute"));

    journal.clear();
    batch->append(noted("b", "undo"));
    testing::internal::CaptureStderr();
    EXPECT_THROW(batch->undo(), std::runtime_error) << "from b";
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("caught exception two"));
    EXPECT_THAT(journal, ElementsAre("open one for undo", "open two for undo", "close two for undo",
                                     "close one for undo"));

    const auto other = BatchCompositeCommand::create(selection, "rename");
    journal.clear();
    other->execute();
    EXPECT_THAT(journal, IsEmpty()) << "nobody wraps a rename";
}
