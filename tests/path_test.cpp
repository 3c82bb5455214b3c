#include <algorithm>
#include <climits>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
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
    const auto names = [](const std::string& text, char separator) {
        return namesOf(PathSegment(text, 1, separator));
    };
    EXPECT_EQ(names("/world/a", '/'), (Names{"world", "a"}));
    EXPECT_EQ(names("//world//a//", '/'), (Names{"world", "", "a", ""}));
    EXPECT_EQ(names("world/a/", '/'), (Names{"world", "a"}));
    EXPECT_EQ(names("a/b", ':'), (Names{"a/b"}));
    EXPECT_EQ(names("//", '/'), Names());
    EXPECT_EQ(names("/a/b", '\0'), (Names{"/a/b"}));
    EXPECT_EQ(names("", '\0'), (Names{""}));
    Names many;
    std::string text;
    for (int i = 0; i < 50; ++i) {
        many.push_back("name" + std::to_string(i % 20));
        text += '/' + many.back();
    }
    EXPECT_EQ(names(text, '/'), many);
    EXPECT_EQ(PathSegment("a\0b/ü"s, 1, '/').string(), "/a\0b/ü"s);
    EXPECT_EQ(PathSegment(PathComponent("a/b"), 1, ':').string(), ":a/b");
    EXPECT_EQ(PathSegment(PathComponent::toComponents({"a", "", "b/"}), 1, '\0').string(), "ab/");
    EXPECT_EQ(PathSegment("//", 1, '/').string(), "");
    EXPECT_NE(PathSegment("/a", 1, '/'), PathSegment("/a", 2, '/'));
    EXPECT_NE(PathSegment("/a", 1, '/'), PathSegment(":a", 1, ':'));
}

TEST(PathSegment, HeadsKeepAtLeastOneAndAtMostAll)
{
    const PathSegment three(":a:b:c", test::runTimeOf(':'), ':');
    const auto heads = [&](int n) { return outcome([&, n] { return Path(three.head(n)); }); };
    EXPECT_EQ(heads(1), ":a");
    EXPECT_EQ(heads(-2), ":a");
    EXPECT_EQ(heads(2), ":a:b");
    EXPECT_EQ(heads(-1), ":a:b");
    EXPECT_EQ(heads(3), ":a:b:c");
    for (const auto n : {0, 4, -3, INT_MAX, INT_MIN}) {
        EXPECT_EQ(heads(n), "segment error: :a:b:c") << n;
    }
    const auto none = three.pop().popHead().pop();
    EXPECT_EQ(notation(Path(none)), ":");
    EXPECT_EQ(outcome([&] { return Path(none.pop()); }), "segment error: ");
    EXPECT_EQ(outcome([&] { return Path(none.popHead()); }), "segment error: ");
}

TEST(Path, EditsKeepTheSegmentsApart)
{
    const PathComponent x("x");
    const auto add = [&](const Path& p) { return p + x; };
    const auto pop = [](const Path& p) { return p.pop(); };
    const auto popHead = [](const Path& p) { return p.popHead(); };
    const auto popSegment = [](const Path& p) { return p.popSegment(); };
    const auto sibling = [&](const Path& p) { return p.sibling(x); };
    const auto head = [](int n) { return [n](const Path& p) { return p.head(n); }; };
    const auto put = [&](int i) {
        return [&x, i](const Path& p) { return p.replaceComponent(i, x); };
    };
    using Edit = std::function<Path(const Path&)>;
    struct Case
    {
        std::string from;
        Edit edit;
        std::string to;
    };
    const std::vector<Case> cases = {{"/a", pop, ""},
                                     {"/a", popHead, ""},
                                     {"/a|:b:c", add, "/a|:b:c:x"},
                                     {"/a|:b:c", sibling, "/a|:b:x"},
                                     {"/a|:b:c", popHead, ":b:c"},
                                     {"/a|:b:c", popSegment, "/a"},
                                     {"/a|:b:c", head(1), "/a"},
                                     {"/a|:b:c", head(2), "/a|:b"},
                                     {"/a|:b:c", head(-1), "/a|:b"},
                                     {"/a|:b:c", head(3), "/a|:b:c"},
                                     {"/a|:b:c", head(4), "path error: /a:b:c"},
                                     {"/a|:b:c", head(-3), "path error: /a:b:c"},
                                     {"/a|:b:c", put(0), "/x|:b:c"},
                                     {"/a|:b:c", put(2), "/a|:b:x"},
                                     {"/a|:b:c", put(3), "path error: /a:b:c"},
                                     {"/a|:b:c", put(-1), "path error: /a:b:c"},
                                     // Empty segments count as segments only.
                                     {"/a|:", add, "/a|:x"},
                                     {"/a|:", pop, "segment error: "},
                                     {"/a|:", sibling, "segment error: "},
                                     {"/a|:", popSegment, "/a"},
                                     {"/|:b", popHead, "segment error: "},
                                     {"/|:b", pop, "/"},
                                     {"/|:b|>|/c", put(1), "/|:b|>|/x"},
                                     {"/|:b|>|/|:c", head(1), "/|:b|>|/"}};
    for (const auto& each : cases) {
        const auto before = path(each.from);
        EXPECT_EQ(outcome([&] { return each.edit(before); }), each.to) << "from " << each.from;
        EXPECT_EQ(notation(before), each.from);
    }
    for (const auto* text : {"", "/", "/|:"}) {
        for (const auto& edit : {Edit(add), Edit(pop), Edit(popHead), Edit(popSegment),
                                 Edit(sibling), Edit(head(1)), Edit(put(0))}) {
            EXPECT_EQ(outcome([&] { return edit(path(text)); }), "path error: ") << text;
        }
        EXPECT_THROW((void)path(text).back(), InvalidOperationOnPath);
        EXPECT_TRUE(path(text).empty());
        EXPECT_EQ(path(text).hash(), 0x345678U);
        EXPECT_EQ((path(text) + PathSegment(x, 9, '>')).size(), 1U);
        EXPECT_TRUE(path("/a").startsWith(path(text)));
    }
    EXPECT_EQ(Path().runTimeId(), 0U);
    EXPECT_EQ(path("/a|:").runTimeId(), test::runTimeOf(':'));
    EXPECT_EQ((path("/a") + std::string("b/c")).size(), 2U);
    EXPECT_EQ(path("/a|:b|/").back(), PathComponent("b"));
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
        {"/a", "/a/b", "/x", "path error: /a"}};
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
    const Path otherRunTime(PathSegment("/a/b", 99, '/'));
    const Path otherSeparator(PathSegment(":a:b", test::runTimeOf('/'), ':'));
    for (const auto& other : {path("/a|/b"), path("/a|:b"), path("/|:|/a/b"), path("/a/b|/"),
                              otherRunTime, otherSeparator}) {
        EXPECT_NE(path("/a/b"), other) << notation(other);
        EXPECT_EQ(path("/a/b").hash(), other.hash()) << notation(other);
        EXPECT_TRUE(path("/a/b").startsWith(other) && other.startsWith(path("/a/b")));
        EXPECT_FALSE(path("/a").startsWith(other));
        EXPECT_TRUE(other.startsWith(path(":a")));
        EXPECT_FALSE(other.startsWith(path("/b")));
        EXPECT_FALSE(path("/a/b").isAtOrBelow(other));
        // An empty segment more is one run-time further.
        EXPECT_EQ(other.isAtOrBelow(path("/a/b")), other == path("/a/b|/"));
    }
    const std::unordered_map<Path, int> byPath = {{path("/a/b"), 1}, {path("/a|:b"), 2}};
    EXPECT_EQ(byPath.at(path("/a|:b")), 2);
    EXPECT_EQ(byPath.count(path("/a|/b")), 0U);
}

TEST(Path, AMovedFromPathIsTheEmptyPath)
{
    auto source = path("/a|:b");
    const auto target = std::move(source);
    EXPECT_EQ(target, path("/a|:b"));
    EXPECT_EQ(source, Path()); // NOLINT(bugprone-use-after-move): the contract
    EXPECT_EQ(source.hash(), Path().hash());
}

TEST(Path, CopiesShareWhatIsMadeOnceAndLetGoOfTheirNamesTogether)
{
    const auto names = PathComponent::tableSize();
    auto one = path("/lone1/lone2|:lone3");
    auto other = one;
    EXPECT_EQ(&one.getSegments(), &other.getSegments());
    auto& same = one;
    one = same;
    one = std::move(same);
    EXPECT_EQ(one, other);
    EXPECT_EQ(PathSegment(one.segment(1)), one.getSegments().back());
    one = Path();
    EXPECT_EQ(PathComponent::tableSize(), names + 3);
    EXPECT_EQ(other.begin()->string(), "lone1");
    other = other.pop();
    EXPECT_EQ(notation(other), "/lone1/lone2");
    other = Path();
    EXPECT_EQ(PathComponent::tableSize(), names);
}

TEST(Path, IsUsedByOtherThreadsWhileTheMainThreadKeepsACopy)
{
    const auto names = PathComponent::tableSize();
    std::vector<Path> kept;
    for (int i = 0; i < 100; ++i) {
        kept.push_back(path("/world/set" + std::to_string(i) + "|:lamp:bulb") + "wire");
    }
    const auto work = [&kept] {
        for (int round = 0; round < 50; ++round) {
            for (const auto& each : kept) {
                const auto copy = each;
                const auto other = copy.pop().sibling(each.back()) + each.back();
                EXPECT_EQ(other.string(), each.head(3).string() + ":wire:wire");
                EXPECT_TRUE(other.pop().getSegments() != copy.getSegments());
            }
        }
    };
    std::thread first(work);
    std::thread second(work);
    for (int i = 0; i < 5'000; ++i) {
        EXPECT_EQ((kept.front() + ("new" + std::to_string(i))).size(), 6U);
    }
    first.join();
    second.join();
    kept.clear();
    EXPECT_EQ(PathComponent::tableSize(), names);
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
            const auto& child = components.front();
            EXPECT_EQ((unlucky + child).hash(),
                      Path(PathSegment({component, components[wanted], child}, 1, '/')).hash());
            ++found;
        }
    }
    EXPECT_GT(found, 0);
}

TEST(Path, OfAVeryDeepItemIsExtendedAndCutWithoutTakingStack)
{
    const auto names = PathComponent::tableSize();
    {
        Path deep = PathSegment(std::vector<PathComponent>(200'000, PathComponent("n")), 1, '/');
        std::vector<Path> line = {deep};
        for (int i = 0; i < 40; ++i) {
            line.push_back(line.back() + std::to_string(i));
        }
        deep = line.back();
        for (auto expected = line.rbegin(); expected != line.rend(); ++expected) {
            ASSERT_EQ(deep, *expected);
            ASSERT_EQ(deep.hash(), Path(deep.getSegments()).hash());
            deep = deep.pop();
        }
    }
    EXPECT_EQ(PathComponent::tableSize(), names);
}

TEST(Path, RandomEditsGiveWhatTheyGiveOnPlainVectors)
{
    using Model = std::vector<std::pair<char, Names>>; // the separator and names of each segment
    test::Random random;
    const auto namesBefore = PathComponent::tableSize();
    const Names pool = {"a", "b", "", "c/d", "ü"};
    const std::string separators = "/:";
    std::vector<std::pair<Path, Model>> known(12);
    for (int step = 0; step < 20'000; ++step) {
        auto [path, model] = random.of(known);
        const auto name = random.of(pool);
        const auto separator = random.of(separators);
        const auto what = path.empty() ? 0 : random.below(path.size() > 40 ? 8 : 14);
        if (what < 2) {
            path = path + PathSegment(PathComponent(name), test::runTimeOf(separator), separator);
            model.push_back({separator, {name}});
        } else if (what == 2) {
            path = path.pop();
            model.back().second.pop_back();
        } else if (what == 3) {
            path = path.popHead();
            model.front().second.erase(model.front().second.begin());
        } else if (what == 4) {
            path = path.popSegment();
            model.pop_back();
        } else if (what == 5) {
            path = path.sibling(PathComponent(name));
            model.back().second.back() = name;
        } else if (what == 6) {
            const auto count = 1 + random.below(path.size());
            path = path.head(static_cast<int>(count));
            auto left = count;
            for (auto& [itsSeparator, names] : model) {
                names.resize(std::min(names.size(), left));
                left -= names.size();
            }
        } else if (what == 7) {
            // A child of a path whose last segment is empty.
            path = path +
                   PathSegment(PathSegment::Components(), test::runTimeOf(separator), separator) +
                   name;
            model.push_back({separator, {name}});
        } else {
            path = path + name;
            model.back().second.push_back(name);
        }
        std::erase_if(model, [](const auto& segment) { return segment.second.empty(); });

        std::vector<PathSegment> segments;
        Names flat;
        std::uint32_t hash = 0x345678;
        for (const auto& [modelSeparator, names] : model) {
            const auto components = PathComponent::toComponents(names);
            segments.emplace_back(components, test::runTimeOf(modelSeparator), modelSeparator);
            flat.insert(flat.end(), names.begin(), names.end());
            for (const auto& component : components) {
                hash = hash * 1000003U ^ static_cast<std::uint32_t>(component.id());
            }
        }
        ASSERT_EQ(path, Path(segments));
        ASSERT_EQ(path.getSegments(), segments);
        ASSERT_EQ(path.string(), Path(segments).string());
        ASSERT_EQ(namesOf(path), flat);
        ASSERT_EQ(path.size(), flat.size());
        ASSERT_EQ(path.hash(), hash ^ static_cast<std::uint32_t>(flat.size()));
        const auto& [other, otherModel] = random.of(known);
        ASSERT_EQ(path == other, model == otherModel);
        const auto prefix = namesOf(other);
        ASSERT_EQ(path.startsWith(other),
                  std::mismatch(prefix.begin(), prefix.end(), flat.begin(), flat.end()).first ==
                      prefix.end());
        auto ancestor = path;
        while (ancestor != other && !ancestor.empty()) {
            ancestor = ancestor.pop();
        }
        ASSERT_EQ(path.isAtOrBelow(other), ancestor == other);
        random.of(known) = {path, model};
    }
    known.clear();
    EXPECT_EQ(PathComponent::tableSize(), namesBefore);
}
