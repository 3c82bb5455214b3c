#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "kiv/globalSelection.h"
#include "kiv/namedSelection.h"
#include "kiv/notificationGuard.h"
#include "kiv/observableSelection.h"
#include "kiv/selectionNotification.h"

#include "callback.h"
#include "paths.h"
#include "stubs.h"

using namespace Kiv_v4;
using test::Callback;
using test::itemAt;
using test::path;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Op = SelectionCompositeNotification::Op;

std::string textOf(const Op& op)
{
    static const char* const names[] = {"append", "remove", "insert", "clear", "replace"};
    return names[op.opType] + (op.item ? " " + op.item->path().string() : "") +
           (op.pos ? " before " + op.pos->path().string() : "");
}

/// Writes down what the observers of a selection are told.
struct Record
{
    explicit Record(Subject& subject) { subject.addObserver(observer); }

    std::vector<std::string> take() { return std::exchange(events, {}); }

    std::vector<std::string> events;
    Observer::Ptr observer = Callback::make([this](const Notification& notification) {
        if (const auto* all = dynamic_cast<const SelectionCompositeNotification*>(&notification)) {
            events.push_back("composite of " + std::to_string(all->size()));
            for (const auto& op : *all) {
                events.push_back("- " + textOf(op));
            }
        } else {
            events.push_back(textOf(Op(dynamic_cast<const SelectionChanged&>(notification))));
        }
    });
};

class ObservableSelectionTest : public testing::Test
{
protected:
    const SceneItem::Ptr a = itemAt("/a");
    const SceneItem::Ptr b = itemAt("/b");
    ObservableSelection selection;
    Record record{selection};
};

} // namespace

TEST_F(ObservableSelectionTest, TellsOfEachChangeOnceItIsComplete)
{
    std::vector<std::size_t> sizes;
    const auto reader =
        Callback::make([&](const Notification&) { sizes.push_back(selection.size()); });
    selection.addObserver(reader);
    Selection two;
    two.append(a);
    two.append(b);
    selection.append(a);
    selection.insert(a, b);
    selection.insert(nullptr, itemAt("/c"));
    selection.remove(a);
    selection.replaceWith(two);
    selection.clear();
    selection.clear();
    EXPECT_THAT(record.take(), ElementsAre("append /a", "insert /b before /a", "append /c",
                                           "remove /a", "replace", "clear", "clear"));
    EXPECT_THAT(sizes, ElementsAre(1, 2, 3, 2, 2, 0, 0));
}

TEST_F(ObservableSelectionTest, TellsNothingOfWhatFailsOrChangesNothingOrIsAStep)
{
    selection.doAppend(a);
    selection.append(a);
    selection.insert(b, a);
    selection.remove(b);
    EXPECT_THROW(selection.append(nullptr), std::invalid_argument);
    EXPECT_THROW(selection.insert(b, itemAt("/c")), std::invalid_argument);
    selection.doClear();
    EXPECT_THAT(record.take(), IsEmpty());
}

TEST_F(ObservableSelectionTest, GathersUnderTheOutermostGuard)
{
    {
        const NotificationGuard guard(selection);
        {
            const NotificationGuard inner(selection);
            selection.append(a);
        }
        selection.insert(a, b);
        selection.remove(a);
        selection.clear();
        selection = Selection();
        EXPECT_THAT(record.take(), IsEmpty());
        EXPECT_THROW(selection.notify(SelectionCleared()), std::logic_error);
    }
    EXPECT_THAT(record.take(), ElementsAre("composite of 5", "- append /a", "- insert /b before /a",
                                           "- remove /a", "- clear", "- replace"));
    {
        const NotificationGuard guard(selection);
    }
    EXPECT_THAT(record.take(), ElementsAre("composite of 0"));
}

TEST_F(ObservableSelectionTest, StartsWithoutObserversAndGuardWhenMadeFromAnother)
{
    selection.append(a);
    selection.beginNotificationGuard();
    ObservableSelection copy(selection);
    EXPECT_TRUE(copy.contains(a->path()));
    EXPECT_EQ(copy.nbObservers(), 0u);
    EXPECT_FALSE(copy.inCompositeNotification());

    ObservableSelection moved(std::move(selection));
    EXPECT_TRUE(moved.contains(a->path()));
    EXPECT_EQ(moved.nbObservers(), 0u);
    EXPECT_FALSE(moved.inCompositeNotification());

    selection.endNotificationGuard();
    EXPECT_THAT(record.take(), ElementsAre("append /a", "composite of 1", "- clear"));

    copy.addObserver(record.observer);
    const Selection plain(std::move(copy));
    EXPECT_TRUE(plain.contains(a->path()));
    EXPECT_THAT(record.take(), ElementsAre("clear"));
}

TEST_F(ObservableSelectionTest, TellsOfAssignmentsOnBothSides)
{
    ObservableSelection other;
    other.append(a);
    Record otherRecord(other);
    selection = other;
    EXPECT_EQ(selection.size(), 1u);
    selection = static_cast<const Selection&>(other);
    EXPECT_THAT(record.take(), ElementsAre("replace", "replace"));
    EXPECT_THAT(otherRecord.take(), IsEmpty());

    selection = std::move(other);
    EXPECT_EQ(selection.size(), 1u);
    EXPECT_TRUE(other.empty());
    EXPECT_EQ(selection.nbObservers(), 1u);
    EXPECT_THAT(record.take(), ElementsAre("replace"));
    EXPECT_THAT(otherRecord.take(), ElementsAre("clear"));

    static_cast<Selection&>(other) = std::move(selection);
    EXPECT_EQ(other.size(), 1u);
    EXPECT_THAT(record.take(), ElementsAre("clear"));
    EXPECT_THAT(otherRecord.take(), ElementsAre("replace"));
}

TEST(GlobalSelection, IsInstalledOnceUntilItIsCleared)
{
    const auto first = std::make_shared<ObservableSelection>();
    const auto second = std::make_shared<ObservableSelection>();
    EXPECT_EQ(GlobalSelection::get(), nullptr);
    GlobalSelection::initializeInstance(first);
    test::expectError<std::invalid_argument>([&] { GlobalSelection::initializeInstance(second); },
                                             "Cannot initialize global selection more than once.");
    EXPECT_EQ(GlobalSelection::get(), first);
    GlobalSelection::initializeInstance(nullptr);
    GlobalSelection::initializeInstance(second);
    EXPECT_EQ(GlobalSelection::get(), second);
    GlobalSelection::initializeInstance(nullptr);
}

TEST(NamedSelection, IsMadeWhenFirstAskedForAndStaysUntilItIsRemoved)
{
    const auto selection = NamedSelection::get("x");
    selection->append(itemAt("/a"));
    EXPECT_EQ(NamedSelection::get("x"), selection);
    EXPECT_NE(NamedSelection::get(""), selection);
    NamedSelection::remove("x");
    NamedSelection::remove("x");
    EXPECT_TRUE(NamedSelection::get("x")->empty());
    EXPECT_EQ(selection->size(), 1u);
}
