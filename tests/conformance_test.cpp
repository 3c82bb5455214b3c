#include <algorithm>
#include <gmock/gmock.h>

#include "kiv/conformance/conformance.h"
#include "kiv/conformance/failingAllocations.h"

#include "conformance/faultyRunTime.h"

using namespace Kiv_v4;
using conformance::Finding;
using test::Fault;

namespace {

conformance::Candidate faulty(Fault fault)
{
    return {"faulty", [fault] {
                return conformance::Running{std::make_shared<test::FaultyRunTime>(fault), {}};
            }};
}

struct Seeded
{
    const char* name;
    Fault fault;
    const char* contract;
    const char* item; ///< That one of the findings names.
    const char* seen; ///< A part of what it says that was seen.
};

void PrintTo(const Seeded& seeded, std::ostream* stream)
{
    *stream << seeded.name;
}

class SeededFaults : public testing::TestWithParam<Seeded>
{};

} // namespace

TEST_P(SeededFaults, AreFoundAndNamed)
{
    const auto& seeded = GetParam();
    const auto report = conformance::check(faulty(seeded.fault));
    const auto findings = report.findings();
    EXPECT_TRUE(std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        return finding.contract == seeded.contract &&
               finding.item.find(seeded.item) != std::string::npos &&
               finding.seen.find(seeded.seen) != std::string::npos && !finding.expected.empty() &&
               finding.seed == 1;
    })) << conformance::text(report);
}

INSTANTIATE_TEST_SUITE_P(
    Conformance, SeededFaults,
    testing::Values(
        Seeded{"noNotification", Fault::NoNotification, "notifications.complete", "%top",
               "it has "},
        Seeded{"notificationBeforeTheChange", Fault::NotificationBeforeTheChange,
               "notifications.time", "%top%", "the notification came before the change"},
        Seeded{"wrongPathInTheNotification", Fault::WrongPathInTheNotification,
               "notifications.paths", "%top%", "a previous path that nobody knows"},
        Seeded{"danglingItemAfterRename", Fault::DanglingItemAfterRename, "stale.paths", "%top%",
               "an item"},
        Seeded{"undoLosesTheOrder", Fault::UndoLosesTheOrder, "commands.undo", "%top",
               "children: "},
        Seeded{"redoForgets", Fault::RedoForgets, "commands.redo", "%top", "children: "},
        Seeded{"commandChangesWhenMade", Fault::CommandChangesWhenMade, "commands.making", "%top",
               "matrix: "},
        Seeded{"nameWithSeparator", Fault::NameWithSeparator, "names.fit", "%top%", "'"},
        Seeded{"parentIsAnother", Fault::ParentIsAnother, "hierarchy.parents", "%top%a%x",
               "%top (node)"},
        Seeded{"matrixIgnoresTheParent", Fault::MatrixIgnoresTheParent, "transforms.matrices",
               "%top%a", "1 0 0 0"},
        Seeded{"textDoesNotComeBack", Fault::TextDoesNotComeBack, "attributes.texts", "%top",
               "'1'"},
        Seeded{"crashOnStalePath", Fault::CrashOnStalePath, "stale.items", "%top%",
               "the process "}, // died; under a sanitizer it ended with a code
        Seeded{"forgottenUnregistering", Fault::ForgottenUnregistering, "registration.ends", "",
               "RunTimeMgr still knows it"},
        Seeded{"exceptionFromUndo", Fault::ExceptionFromUndo, "commands.undo", "%top%",
               "cannot be undone"},
        Seeded{"orderChangesByItself", Fault::OrderChangesByItself, "hierarchy.order", "%top",
               "children: "}),
    [](const auto& seeded) { return seeded.param.name; });

TEST(Conformance, FindsNothingInARightRunTimeWhateverTheSeed)
{
    for (std::uint64_t seed = 1; seed <= 3; ++seed) {
        conformance::Options options;
        options.seed = seed;
        options.allocationFaults = conformance::failingAllocations();
        const auto report = conformance::check(faulty(Fault::None), options);
        EXPECT_TRUE(report.passed()) << conformance::text(report);
    }
}

TEST(Conformance, ReportsAsTextJsonAndJUnit)
{
    conformance::Options options;
    options.only = {"hierarchy.parents", "transforms", "memory"};
    options.seed = 5;
    const auto report = conformance::check(faulty(Fault::ParentIsAnother), options);
    const auto text = conformance::text(report);
    EXPECT_THAT(text, testing::HasSubstr("hierarchy.parents: The parent of a child is the item "
                                         "that lists it.\n    item:     %top%a%x\n"));
    EXPECT_THAT(text, testing::HasSubstr("    again by: --seed 5\n    to mend:  parent must"));
    EXPECT_THAT(text, testing::EndsWith("faulty: 1 contract broken, 2 contracts held, 1 skipped "
                                        "(seed 5)\n"));
    EXPECT_THAT(conformance::json(report),
                testing::AllOf(testing::HasSubstr("\"passed\": false"),
                               testing::HasSubstr("\"item\": \"%top%a%x\"")));
    EXPECT_THAT(conformance::junit(report),
                testing::HasSubstr("tests=\"4\" failures=\"1\" skipped=\"1\""));
}

TEST(Conformance, SurvivesARunTimeThatCannotBeMadeAndOneThatHangs)
{
    const conformance::Candidate broken{
        "broken", []() -> conformance::Running { throw std::runtime_error("no data"); }};
    const auto findings = conformance::check(broken).findings();
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings.front().contract, "create");
    EXPECT_EQ(findings.front().seen, "an exception: no data");

    conformance::Options options;
    options.only = {"create"};
    options.timeLimit = 1;
    const conformance::Candidate hanging{"hanging", []() -> conformance::Running {
                                             for (volatile bool forever = true; forever;) {
                                             }
                                             return {};
                                         }};
    const auto report = conformance::check(hanging, options);
    ASSERT_EQ(report.findings().size(), 1U);
    EXPECT_EQ(report.findings().front().seen, "no end within 1 s");
}

TEST(Conformance, LoadsAndUnloadsPluginsInItsProcesses)
{
    const auto report = conformance::check(conformance::pluginCandidate(KIV_PROPS));
    EXPECT_TRUE(report.passed()) << conformance::text(report);
    EXPECT_EQ(conformance::check(conformance::pluginCandidate("nowhere.so")).findings()[0].contract,
              "create");
}
