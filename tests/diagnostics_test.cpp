#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "kiv/handleAssert.h"
#include "kiv/versionInfo.h"

using namespace Kiv_v4;

TEST(HandleAssert, WritesAndThrowsTheSameReport)
{
    const std::string report = "Assertion failed: \"a == \"b\"\"\n\tFile: src/hierarchy\n"
                               "\tLine: 7\n\tFunction: createItem\n";
    for (const auto* description : {static_cast<const char*>(nullptr), "must agree", ""}) {
        const auto expected =
            description ? report + "\tDescription: " + description + "\n" : report;
        testing::internal::CaptureStderr();
        try {
            handleAssert("createItem", "src/hierarchy", 7, "a == \"b\"", description);
        } catch (const AssertionException& error) {
            EXPECT_EQ(error.what(), expected);
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(), expected);
    }
}

TEST(VersionInfo, NamesTheBuild)
{
    EXPECT_THAT(VersionInfo::getGitCommit(), testing::MatchesRegex("[0-9a-f]{40}"));
    EXPECT_STRNE(VersionInfo::getGitBranch(), "");
    EXPECT_THAT(VersionInfo::getBuildDate(),
                testing::MatchesRegex("[A-Z][a-z]{2} [0-9]{2}/[0-9]{2}/[0-9]{4}, [0-9]{12}"));
}

TEST(VersionInfo, IsDumpedAtLoadOnRequestOnly)
{
    // A death test in this style runs the program anew, so the library is loaded again.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto line = std::string("             kiv: kiv version 4.2.0 (") +
                      VersionInfo::getBuildDate() + ", build 34, commit " +
                      VersionInfo::getGitCommit() + ", branch " + VersionInfo::getGitBranch() +
                      ")\n";
    const auto dumpedWith = [](const char* value, const std::string& expected) {
        ::setenv("KORVANE_DUMP_VERSION_INFO", value, 1);
        EXPECT_EXIT(std::exit(0), testing::ExitedWithCode(0), testing::StrEq(expected)) << value;
    };
    dumpedWith("1", line);
    dumpedWith("-2 and more", line);
    dumpedWith("0", "");
    dumpedWith("yes", "");
    dumpedWith("", "");
    ::unsetenv("KORVANE_DUMP_VERSION_INFO");
    EXPECT_EXIT(std::exit(0), testing::ExitedWithCode(0), testing::StrEq(""));
}
