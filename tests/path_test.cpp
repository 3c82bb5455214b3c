#include <climits>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "kiv/path.h"

#include "paths.h"
#include "random.h"

using namespace Kiv_v4;
using test::notation;
using test::path;

namespace {

using Names = std::vector<std::string>;

template <class Components>
Names namesOf(const Components& components)
{
    Names names;
    for (const auto& component : components) {
        names.push_back(component.string());
    }
    return names;
}

/// The notation of the path that `edit` gives, or which error it throws.
std::string outcome(const std::function<Path()>& edit)
{
    try {
        return notation(edit());
    } catch (const InvalidOperationOnPath& error) {
        return std::string("path error: ") + error.what();
    } catch (const InvalidOperationOnPathSegment& error) {
        return std::string("segment error: ") + error.what();
    }
}

} // namespace

TEST(PathSegment, TextIsSplitAtTheSeparatorAndWrittenWithItInFront)
{
    using namespace std::string_literals;
    struct Case
    {
        std::string text;
        char separator;
        Names names;
        std::string written;
    };
    const std::vector<Case> cases = {
        {"/world/a", '/', {"world", "a"}, "/world/a"},
        {"//world/a", '/', {"world", "a"}, "/world/a"},
        {"world/a/", '/', {"world", "a"}, "/world/a"},
        {"world//a", '/', {"world", "", "a"}, "/world//a"},
        {"world/a//", '/', {"world", "a", ""}, "/world/a/"},
        {"a/b", ':', {"a/b"}, ":a/b"},
        {"//", '/', {}, ""},
        {"", '/', {}, ""},
        {"/a/b", '\0', {"/a/b"}, "/a/b"},
        {"a\0b/c"s, '/', {"a\0b"s, "c"}, "/a\0b/c"s},
        {"", '\0', {""}, ""},
        {"é方é", '\xa9', {"\xc3", "方\xc3"}, "\xa9\xc3\xa9方\xc3"},
    };
    for (const auto& [text, separator, names, written] : cases) {
        const PathSegment segment(text, 3, separator);
        EXPECT_EQ(namesOf(segment), names) << text;
        EXPECT_EQ(segment.string(), written) << text;
        EXPECT_EQ(segment.size(), names.size()) << text;
        EXPECT_EQ(segment.empty(), names.empty()) << text;
        EXPECT_EQ(segment.runTimeId(), 3U);
        EXPECT_EQ(segment.separator(), separator);
    }
    EXPECT_EQ(PathSegment(PathComponent("a/b"), 1, '/').string(), "/a/b");
    EXPECT_EQ(PathSegment(PathComponent::toComponents({"a", "", "b/"}), 1, '\0').string(), "ab/");
}

TEST(PathSegment, IsEqualOnlyWithTheSameNamesRunTimeAndSeparator)
{
    const PathSegment segment("/a/b", 1, '/');
    EXPECT_EQ(segment, PathSegment("a/b", 1, '/'));
    for (const auto& other : {PathSegment("/a/b", 2, '/'), PathSegment(":a:b", 1, ':'),
                              PathSegment("/a", 1, '/'), PathSegment("/a/c", 1, '/')}) {
        EXPECT_NE(segment, other) << other.string();
    }
}

TEST(PathSegment, PopsAndHeadsKeepTheRestAndRefuseToKeepNothing)
{
    const PathSegment three(":a:b:c", 7, ':');
    EXPECT_EQ(three.pop(), PathSegment(":a:b", 7, ':'));
    EXPECT_EQ(three.popHead(), PathSegment(":b:c", 7, ':'));
    EXPECT_EQ(three.pop().pop().pop(), PathSegment("", 7, ':'));
    const std::vector<std::pair<int, Names>> heads = {
        {1, {"a"}}, {2, {"a", "b"}}, {3, {"a", "b", "c"}}, {-1, {"a", "b"}}, {-2, {"a"}}};
    for (const auto& [n, names] : heads) {
        EXPECT_EQ(three.head(n), PathSegment(PathComponent::toComponents(names), 7, ':')) << n;
    }
    const auto refusal = [](const auto& operation) {
        return outcome([&] { return Path(operation()); });
    };
    for (const auto n : {0, 4, -3, -4, INT_MAX, INT_MIN}) {
        EXPECT_EQ(refusal([&] { return three.head(n); }), "segment error: :a:b:c") << n;
    }
    const PathSegment none("", 1, '/');
    EXPECT_EQ(refusal([&] { return none.pop(); }), "segment error: ");
    EXPECT_EQ(refusal([&] { return none.popHead(); }), "segment error: ");
    EXPECT_EQ(refusal([&] { return none.head(0); }), "segment error: ");
}

TEST(Path, WithoutComponentsIsEmptyAndRefusesEverythingButANewSegment)
{
    const std::vector<std::function<Path(const Path&)>> refused = {
        [](auto& p) { return p + PathComponent("x"); },
        [](auto& p) { return p + std::string("x"); },
        [](auto& p) { return p.pop(); },
        [](auto& p) { return p.popHead(); },
        [](auto& p) { return p.popSegment(); },
        [](auto& p) { return p.head(1); },
        [](auto& p) { return p.head(0); },
        [](auto& p) { return p.sibling(PathComponent("x")); },
        [](auto& p) { return p.replaceComponent(0, PathComponent("x")); },
        [](auto& p) { return p + p.back(); },
        [](auto& p) { return p.reparent(path("/a"), p); },
    };
    for (const auto* text : {"", "/", "/|:"}) {
        const auto none = path(text);
        for (std::size_t i = 0; i < refused.size(); ++i) {
            EXPECT_EQ(outcome([&] { return refused[i](none); }), "path error: ") << text << i;
        }
        EXPECT_EQ(none.size(), 0U);
        EXPECT_TRUE(none.empty());
        EXPECT_EQ(none.begin(), none.end());
        EXPECT_EQ(none.string(), "");
        EXPECT_EQ(none.hash(), 0x345678U);
        EXPECT_EQ(notation(none + PathSegment(">x", 9, '>')),
                  none.nbSegments() == 0 ? ">x" : text + std::string("|>x"));
        EXPECT_TRUE(path("/a").startsWith(none));
        EXPECT_FALSE(none.startsWith(path("/a")));
    }
    EXPECT_EQ(Path().runTimeId(), 0U);
    EXPECT_EQ(path("/|:").runTimeId(), test::runTimeOf(':'));
    EXPECT_NE(Path(), path("/"));
}

TEST(Path, EditsKeepTheSegmentsApart)
{
    struct Case
    {
        std::string from;
        std::function<Path(const Path&)> edit;
        std::string to;
    };
    const auto pop = [](const Path& p) { return p.pop(); };
    const auto popHead = [](const Path& p) { return p.popHead(); };
    const auto popSegment = [](const Path& p) { return p.popSegment(); };
    const auto addX = [](const Path& p) { return p + std::string("x"); };
    const auto siblingX = [](const Path& p) { return p.sibling(PathComponent("x")); };
    const auto head = [](int n) { return [n](const Path& p) { return p.head(n); }; };
    const auto putX = [](int i) {
        return [i](const Path& p) { return p.replaceComponent(i, PathComponent("x")); };
    };
    const std::vector<Case> cases = {
        {"/a", pop, ""},
        {"/a", popHead, ""},
        {"/a", popSegment, ""},
        {"/a", siblingX, "/x"},
        {"/a|:b:c", addX, "/a|:b:c:x"},
        {"/a|:b:c", siblingX, "/a|:b:x"},
        {"/a|:b:c", pop, "/a|:b"},
        {"/a|:b", pop, "/a"},
        {"/a|:b:c", popHead, ":b:c"},
        {"/a/b|:c", popHead, "/b|:c"},
        {"/a|:b:c", popSegment, "/a"},
        {"/a|:b:c", head(1), "/a"},
        {"/a|:b:c", head(2), "/a|:b"},
        {"/a|:b:c", head(-1), "/a|:b"},
        {"/a|:b:c", head(-2), "/a"},
        {"/a|:b:c", head(3), "/a|:b:c"},
        {"/a|:b:c", head(4), "path error: /a:b:c"},
        {"/a|:b:c", head(0), "path error: /a:b:c"},
        {"/a|:b:c", head(-3), "path error: /a:b:c"},
        {"/a|:b:c", head(INT_MIN), "path error: /a:b:c"},
        {"/a|:b:c", putX(0), "/x|:b:c"},
        {"/a|:b:c", putX(1), "/a|:x:c"},
        {"/a|:b:c", putX(2), "/a|:b:x"},
        {"/a|:b:c", putX(3), "path error: /a:b:c"},
        {"/a|:b:c", putX(-1), "path error: /a:b:c"},
        // Empty segments count as segments only.
        {"/a|:", addX, "/a|:x"},
        {"/a|:", pop, "segment error: "},
        {"/a|:", siblingX, "segment error: "},
        {"/a|:", popSegment, "/a"},
        {"/|:b", popHead, "segment error: "},
        {"/|:b", pop, "/"},
        {"/|:b|>|/c", putX(1), "/|:b|>|/x"},
        {"/|:b|>|/|:c", head(1), "/|:b|>|/"},
        {"/|:b|>", head(1), "/|:b|>"},
    };
    for (const auto& [from, edit, to] : cases) {
        const auto& change = edit;
        const auto before = path(from);
        EXPECT_EQ(outcome([&] { return change(before); }), to) << "from " << from;
        EXPECT_EQ(notation(before), from);
    }
    EXPECT_EQ(notation(path("/a") + std::string("b/c|d")), "/a/b/c|d"); // one name
    EXPECT_EQ((path("/a") + std::string("b/c|d")).size(), 2U);
}

TEST(Path, ReparentingMovesTheTailAndJoinsItWhereTheRunTimeGoesOn)
{
    struct Case
    {
        std::string from, oldParent, newParent, to;
    };
    const std::vector<Case> cases = {
        {"/a/b/c", "/a/b", "/x", "/x/c"},
        {"/a/b", "/a/b", "/x|:y", "/x|:y"},
        {"/a/b/c|:d", "/a", ":x", ":x|/b/c|:d"},  // another run-time: the tail stays apart
        {"/a|:c:d", "/a|:c", "/x|:y", "/x|:y:d"}, // the same run-time: it is joined
        {"/a|:c:d", "/a", "/x", "/x|:c:d"},       // later segments follow unchanged,
        {"/a|/c", "/a", "/x", "/x|/c"},           // also in the same run-time
        {"/a|:b:c", "/a/b", "/x", "/x|:c"},       // the old parent in other segments
        {"/a/b", "/a", "/a/b/c", "/a/b/c/b"},     // below itself
        {"/a/b|:c", "", "/x", "/x/a/b|:c"},       // no old parent: all of it
        {"/a/b", "/a", "", "/b"},                 // no new parent: the tail alone
        {"/a|/|:b", "/a", ":x", ":x|/|:b"},       // empty segments of the tail stay
        {"/|:b", "", "", "/|:b"},                 // in front too
        {"/|/a/b", "/a", "/|:", "/|:|/b"},        // an empty last segment takes no other run-time
        {"/a/b", "/b", "/x", "path error: /a/b"},
        {"/a", "/a/b", "/x", "path error: /a"},
    };
    for (const auto& [from, oldParent, newParent, to] : cases) {
        const auto moved = path(from);
        const auto source = path(oldParent);
        const auto target = path(newParent);
        EXPECT_EQ(outcome([&] { return moved.reparent(source, target); }), to)
            << from << " from " << oldParent << " to " << newParent;
    }
}

TEST(Path, PrefixAndHashIgnoreTheSegmentsWhileEqualityDoesNot)
{
    const PathSegment otherRunTime("/a/b", 99, '/');
    for (const auto& other : {path("/a|/b"), path("/a|:b"), path(":a:b"), path("/|/a/b"),
                              path("/a/b|/"), Path(otherRunTime)}) {
        EXPECT_NE(path("/a/b"), other) << notation(other);
        EXPECT_EQ(path("/a/b").hash(), other.hash()) << notation(other);
        EXPECT_TRUE(path("/a/b").startsWith(other) && other.startsWith(path("/a/b")));
        EXPECT_FALSE(path("/a").startsWith(other));
        EXPECT_TRUE(other.startsWith(path(":a")));
        EXPECT_FALSE(other.startsWith(path("/b")));
    }
    const std::unordered_map<Path, int> byPath = {{path("/a/b"), 1}, {path("/a|:b"), 2}};
    EXPECT_EQ(byPath.at(path("/a|:b")), 2);
    EXPECT_EQ(byPath.count(path("/a|/b")), 0U);
}

TEST(Path, AMovedFromPathIsTheEmptyPath)
{
    auto source = path("/a|:b");
    const auto hash = source.hash();
    auto target = std::move(source);
    EXPECT_EQ(target, path("/a|:b"));
    EXPECT_EQ(target.hash(), hash);
    EXPECT_EQ(source, Path()); // NOLINT(bugprone-use-after-move): the contract
    EXPECT_EQ(source.hash(), 0x345678U);
    source = target;
    EXPECT_EQ(source, target);
}

TEST(Path, AHashIsNeverTheValueThatMeansNoneIsKnown)
{
    // Among the pairs of this many names some hash to 0xFFFFFFFF before the correction.
    std::vector<PathComponent> components;
    for (int i = 0; i < 200'000; ++i) {
        components.emplace_back(std::to_string(i));
    }
    const auto first = static_cast<std::uint32_t>(components.front().id());
    int found = 0;
    for (const auto& component : components) {
        const auto id = static_cast<std::uint32_t>(component.id());
        const auto wanted = ((0x345678U * 1000003U ^ id) * 1000003U ^ 2U ^ 0xFFFFFFFFU) - first;
        if (wanted < components.size()) {
            const Path unlucky(PathSegment({component, components[wanted]}, 1, '/'));
            EXPECT_EQ(unlucky.hash(), 0xFFFFFFFEU);
            EXPECT_EQ(unlucky.hash(), 0xFFFFFFFEU);
            ++found;
        }
    }
    EXPECT_GT(found, 0);
}

namespace {

/// A path as plain data: per segment its separator and names. An edit gives false when the path
/// does not allow it.
struct Model
{
    std::vector<std::pair<char, Names>> segments;

    [[nodiscard]] Names flat() const
    {
        Names names;
        for (const auto& segment : segments) {
            names.insert(names.end(), segment.second.begin(), segment.second.end());
        }
        return names;
    }

    /// Takes the last or first name away, and its segment with the only one.
    bool drop(bool last)
    {
        if (flat().empty()) {
            return false;
        }
        const auto segment = last ? segments.end() - 1 : segments.begin();
        auto& names = segment->second;
        if (names.empty()) {
            return false;
        }
        names.erase(last ? names.end() - 1 : names.begin());
        if (names.empty()) {
            segments.erase(segment);
        }
        return true;
    }

    bool replace(std::size_t index, const std::string& name)
    {
        for (auto& segment : segments) {
            for (auto& each : segment.second) {
                if (index-- == 0) {
                    each = name;
                    return true;
                }
            }
        }
        return false;
    }

    bool add(const std::string& name)
    {
        if (!flat().empty()) {
            segments.back().second.push_back(name);
        }
        return !flat().empty();
    }
};

void check(const Path& path, const Model& model)
{
    const auto flat = model.flat();
    ASSERT_EQ(namesOf(path), flat);
    ASSERT_EQ(path.size(), flat.size());
    ASSERT_EQ(path.empty(), flat.empty());
    ASSERT_EQ(path.nbSegments(), model.segments.size());
    std::string text;
    std::vector<PathSegment> segments;
    for (const auto& [separator, names] : model.segments) {
        for (const auto& name : names) {
            text += separator + name;
        }
        segments.emplace_back(PathComponent::toComponents(names), test::runTimeOf(separator),
                              separator);
    }
    ASSERT_EQ(path, Path(segments));
    ASSERT_EQ(path.string(), text);
    ASSERT_EQ(path.runTimeId(), segments.empty() ? 0 : segments.back().runTimeId());
    std::uint32_t hash = 0x345678;
    for (const auto& component : path) {
        hash = (hash * 1000003U) ^ static_cast<std::uint32_t>(component.id());
    }
    ASSERT_EQ(path.hash(), hash ^ static_cast<std::uint32_t>(flat.size()));
}

} // namespace

TEST(Path, RandomEditsGiveWhatTheyGiveOnPlainVectors)
{
    test::Random random;
    const Names pool = {"a", "b", "", "c/d", "ü"};
    const std::string separators = "/:>";
    std::vector<std::pair<Path, Model>> known(12);
    int refused = 0;
    for (int step = 0; step < 20'000; ++step) {
        const auto& picked = random.of(known);
        const auto before = picked.first;
        const auto modelBefore = picked.second;
        const auto& other = random.of(known);
        auto model = modelBefore;
        const auto name = random.of(pool);
        const auto n = static_cast<int>(random.below(9)) - 2;
        std::function<Path()> edit;
        auto allowed = true;
        switch (random.below(8)) {
        case 0:
            edit = [&] { return before.pop(); };
            allowed = model.drop(true);
            break;
        case 1:
            edit = [&] { return before.popHead(); };
            allowed = model.drop(false);
            break;
        case 2:
            edit = [&] { return before.replaceComponent(n, PathComponent(name)); };
            allowed = n >= 0 && model.replace(static_cast<std::size_t>(n), name);
            break;
        case 3: {
            const PathSegment added(name, test::runTimeOf(separators[0]), separators[0]);
            edit = [&before, added] { return before + added; };
            model.segments.emplace_back(separators[0], namesOf(added));
            break;
        }
        case 4: {
            const auto separator = random.of(separators);
            const PathSegment added(PathComponent(name), test::runTimeOf(separator), separator);
            edit = [&before, added] { return before + added; };
            model.segments.push_back({separator, {name}});
            break;
        }
        case 5:
            edit = [&] { return before.sibling(PathComponent(name)); };
            allowed = !model.flat().empty() && !model.segments.back().second.empty() &&
                      model.replace(model.flat().size() - 1, name);
            break;
        default: // names come more often than anything that takes them away
            edit = [&] { return before + name; };
            allowed = model.add(name);
        }
        const auto prefix = other.second.flat();
        const auto all = modelBefore.flat();
        ASSERT_EQ(before.startsWith(other.first),
                  prefix.size() <= all.size() &&
                      std::equal(prefix.begin(), prefix.end(), all.begin()));
        ASSERT_EQ(before == other.first, modelBefore.segments == other.second.segments);
        if (allowed) {
            const auto after = edit();
            ASSERT_NO_FATAL_FAILURE(check(after, model)) << "from " << notation(before);
            if (after.size() < 12) {
                random.of(known) = {after, model};
            }
        } else {
            EXPECT_THROW((void)edit(), std::out_of_range) << notation(before);
            ++refused;
        }
        ASSERT_NO_FATAL_FAILURE(check(before, modelBefore));
    }
    EXPECT_GT(refused, 0);
}
