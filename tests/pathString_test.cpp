#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "kiv/pathString.h"
#include "kiv/stringUtils.h"

#include "stubs.h"

using namespace Kiv_v4;
using test::expectError;
using testing::ElementsAre;

namespace {

/// What a text is parsed to: run-time, separator and names of each segment, or the error.
std::string parsed(const std::string& text)
{
    try {
        const auto path = PathString::path(text);
        std::string outcome;
        for (const auto& segment : path.getSegments()) {
            outcome += std::to_string(segment.runTimeId()) + segment.separator();
            for (const auto& component : segment) {
                outcome += '[' + component.string() + ']';
            }
        }
        return outcome;
    } catch (const EmptyPathSegment& error) {
        return "empty: " + error.pathText() + (error.what() == error.pathText() ? "" : "?");
    } catch (const InvalidPathComponentSeparator& error) {
        return "separator: " + error.segmentText() +
               (error.what() == error.segmentText() ? "" : "?");
    } catch (const InvalidPath& error) {
        return "invalid: " + error.pathText() + (error.what() == error.pathText() ? "" : "?");
    }
}

/// Run-time 1 writes `/`, run-time 2 writes `:`; no hierarchy is there to be asked.
struct PathStrings : testing::Test
{
    PathStrings()
    {
        PathString::registerPathComponentSeparator(slash, '/');
        PathString::registerPathComponentSeparator(colon, ':');
    }

    const Rtid slash = test::registered("slash", nullptr);
    const Rtid colon = test::registered("colon", nullptr);
};

} // namespace

TEST_F(PathStrings, EachSegmentIsReadByItsFirstCharacter)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", ""},
        {"/world/a,:b:c,/d", "1/[world][a]2:[b][c]1/[d]"},
        {"/a:b,:c/d", "1/[a:b]2:[c/d]"},
        {"/a//ü/", "1/[a][][ü]"},
        {"//", "1/"},
        {",", "empty: ,"},
        {"/a,", "empty: /a,"},
        {",/a", "empty: ,/a"},
        {"/a,,/b", "empty: /a,,/b"},
        {"/", "empty: /"},
        {"/world/a,/", "empty: /world/a,/"},
        {"/a,>b", "separator: >b"},
        {"/a,>", "separator: >"},
        {"a,/b", "separator: a"},
        {"/a,b,,", "empty: /a,b,,"},
        {"abc", "invalid: abc"}};
    const auto names = PathComponent::tableSize();
    for (const auto& [text, outcome] : cases) {
        EXPECT_EQ(parsed(text), outcome) << text;
        EXPECT_EQ(PathComponent::tableSize(), names) << text; // also of a text refused half-way
    }
}

TEST_F(PathStrings, WritingAndParsingGivesThePathBack)
{
    const PathSegment none("", slash, '/');
    EXPECT_EQ(PathString::string(Path({none, none})), "");
    EXPECT_EQ(PathString::string(Path({none, PathSegment(":b", colon, ':'), none})), ",:b,");

    using namespace std::string_literals;
    const auto names = PathComponent::toComponents(
        {"a"s, "\0"s, "x\0y"s, "ü方"s, "\xff"s, ";"s, "a b\n"s, "."s, "-"s});
    const Path path({PathSegment(names, slash, '/'), PathSegment(names, colon, ':')});
    for (const auto* separator : {",", "::", "->"}) {
        PathString::setPathSegmentSeparator(separator);
        EXPECT_EQ(PathString::path(PathString::string(path)), path) << separator;
    }
}

TEST_F(PathStrings, RunTimesThatShareASeparatorAreAskedInTurnPrefixByPrefix)
{
    std::vector<std::string> asked;
    std::set<std::string> scene = {"3/a|b", "4/a|b|c:d|e", "3/a|b|c:d|e"};
    for (const auto* name : {"3", "4"}) {
        auto handler = std::make_shared<test::HierarchyStub>();
        handler->onCreateItem = [&, name](const Path& path) {
            asked.push_back(name + path.string());
            return scene.count(asked.back()) != 0 ? std::make_shared<test::Item>(path) : nullptr;
        };
        test::registered(name, handler);
    }
    PathString::registerPathComponentSeparator(4, '|');
    PathString::registerPathComponentSeparator(3, '|');
    EXPECT_THAT(PathString::pathComponentSeparatorRunTimeIds('|'), ElementsAre(4, 3));

    EXPECT_EQ(parsed("/a,|b,|c,:d,|e"), "invalid: /a,|b,|c,:d,|e");
    scene.insert("4/a|b|c");
    asked.clear();
    EXPECT_EQ(parsed("/a,|b,|c,:d,|e"), "1/[a]3|[b]4|[c]2:[d]4|[e]");
    EXPECT_THAT(asked, ElementsAre("4/a|b", "3/a|b", "4/a|b|c", "4/a|b|c:d|e"));

    PathString::unregisterPathComponentSeparator(4, '|');
    EXPECT_EQ(parsed("|nowhere"), "3|[nowhere]") << "alone, nobody is asked";
    PathString::registerPathComponentSeparator(3, '|');
    EXPECT_EQ(parsed("|nowhere"), "3|[nowhere]") << "registered twice, it is alone all the same";
    PathString::registerPathComponentSeparator(colon, '/');
    expectError<InvalidRunTimeId>([] { (void)PathString::path("/a"); }, "1");
}

TEST_F(PathStrings, TextInAnUnknownNotationGoesToTheCreatorsUntilOneMakesAPath)
{
    std::vector<std::string> asked;
    PathString::setCreateSingleSegmentPathFn(colon, [&](const std::string& text) {
        asked.push_back("colon " + text);
        return text == "own" ? Path(PathSegment("made", colon, ':')) : Path();
    });
    PathString::setCreateSingleSegmentPathFn(slash, [&](const std::string& text) {
        asked.push_back("slash " + text);
        return Path(PathSegment("", slash, '/')); // without components, so not an answer
    });
    EXPECT_EQ(parsed("own"), "2:[made]");
    EXPECT_EQ(parsed("other"), "invalid: other");
    EXPECT_EQ(parsed("own,/a"), "separator: own");
    EXPECT_THAT(asked, ElementsAre("slash own", "colon own", "slash other", "colon other"));
    EXPECT_EQ(PathString::createSingleSegmentPathFn(colon)("own").string(), ":made");

    EXPECT_FALSE(PathString::createSingleSegmentPathFn(99));
    PathString::setCreateSingleSegmentPathFn(slash, {});
    EXPECT_THROW((void)PathString::path("own"), std::bad_function_call);
    expectError<InvalidRunTimeId>([] { PathString::setCreateSingleSegmentPathFn(99, {}); }, "99");
}

TEST_F(PathStrings, SettingsThatMakeNoSenseAreRefusedAndChangeNothing)
{
    const auto unregister = [](Rtid id, char separator) {
        return [=] { PathString::unregisterPathComponentSeparator(id, separator); };
    };
    expectError<InvalidRunTimeId>([] { PathString::registerPathComponentSeparator(99, '>'); },
                                  "99");
    expectError<std::out_of_range>(unregister(99, '>'), "62");
    expectError<std::out_of_range>(unregister(slash, '\xff'), "-1");
    unregister(colon, '/')(); // registered, but by another run-time
    PathString::registerPathComponentSeparator(slash, '/');
    unregister(slash, '/')(); // one of two
    EXPECT_THAT(PathString::pathComponentSeparatorRunTimeIds('/'), ElementsAre(slash));
    unregister(slash, '/')();
    expectError<std::out_of_range>(unregister(slash, '/'), "47");

    expectError<std::invalid_argument>([] { PathString::setPathSegmentSeparator(""); },
                                       "Path segment separator cannot be empty.");
    expectError<std::invalid_argument>([] { PathString::setCreatePathFn({}); },
                                       "Path creator function cannot be empty.");
    expectError<std::invalid_argument>([] { PathString::setStringFn({}); },
                                       "String creator function cannot be empty.");
    EXPECT_EQ(parsed(":a,:b"), "2:[a]2:[b]");
    EXPECT_EQ(PathString::stringFn()(PathString::createPathFn()({{":a", colon, ':'}})), ":a");
}

TEST_F(PathStrings, SeparatorAndMakersCanBeReplaced)
{
    PathString::setPathSegmentSeparator("::");
    EXPECT_EQ(parsed("/a:::b"), "1/[a]2:[b]");
    EXPECT_EQ(parsed("/a,/b"), "1/[a,][b]");
    EXPECT_EQ(parsed("/a::"), "empty: /a::");
    EXPECT_EQ(PathString::string(PathString::path("/a:::b")), "/a:::b");

    PathString::setCreatePathFn([](const auto& segments) { return Path(segments.front()); });
    EXPECT_EQ(parsed("/a:::b"), "1/[a]");
    PathString::setStringFn([](const Path& path) { return "text of " + path.string(); });
    EXPECT_EQ(PathString::string(Path()), "text of ");
    PathString::setCreatePathFn([](const auto&) -> Path { throw std::domain_error("no"); });
    EXPECT_THROW((void)PathString::path("/a"), std::domain_error);
}

TEST_F(PathStrings, TwoHundredThousandComponentsGoAllTheWay)
{
    constexpr std::size_t kSize = 200'000;
    PathSegment::Components components;
    std::string text;
    for (std::size_t i = 0; i < kSize; ++i) {
        components.emplace_back("name" + std::to_string(i));
        text += "/name" + std::to_string(i);
    }
    const Path path(PathSegment(std::move(components), slash, '/'));
    EXPECT_EQ(path.string(), text);
    {
        const auto again = PathString::path(text);
        EXPECT_EQ(again, path);
        EXPECT_EQ(again.hash(), path.hash());
        const auto head = path.head(static_cast<int>(kSize) / 2);
        EXPECT_TRUE(again.startsWith(head));
        EXPECT_EQ(again.reparent(head, head), path);
    }
    EXPECT_EQ(PathComponent::tableSize(), kSize);

    // As segments of one component each.
    std::replace(text.begin(), text.end(), 'n', ':');
    std::replace(text.begin(), text.end(), '/', ',');
    const auto segmented = PathString::path(text.substr(1));
    EXPECT_EQ(segmented.nbSegments(), kSize);
    EXPECT_EQ(PathString::string(segmented), text.substr(1));
}

TEST(StringUtils, SplitKeepsInnerEmptyPiecesAndDropsTheTrailingOne)
{
    EXPECT_THAT(split("/a//b/", '/'), ElementsAre("", "a", "", "b"));
    EXPECT_THAT(split("a//", '/'), ElementsAre("a", ""));
    EXPECT_THAT(split("/", '/'), ElementsAre(""));
    EXPECT_THAT(split("", '/'), ElementsAre());
    EXPECT_THAT(split("", '\0'), ElementsAre(""));
    EXPECT_THAT(split(std::string("a\0b", 3), '\0'), ElementsAre(std::string("a\0b", 3)));
    EXPECT_THAT(split("a->->b>-c->", "->"), ElementsAre("a", "", "b>-c"));
    EXPECT_THAT(split("---a", "--"), ElementsAre("", "-a"));
    EXPECT_THAT(split("", "--"), ElementsAre());
    EXPECT_EQ(lstrip("//a/", '/'), "a/");
    EXPECT_EQ(lstrip("///", '/'), "");
    EXPECT_EQ(lstrip(std::string("\0a", 2), '\0'), std::string("\0a", 2));
    EXPECT_TRUE(endsWith("a,", ",") && endsWith("a", "") && endsWith("ab", "ab"));
    EXPECT_FALSE(endsWith("b", "ab") || endsWith("a,b", ",") || endsWith("", "a"));
}
