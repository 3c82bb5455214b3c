#include <algorithm>
#include <chrono>
#include <gmock/gmock.h>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "kiv/trie.h"

#include "paths.h"
#include "random.h"

using namespace Kiv_v4;
using test::path;
using testing::ElementsAre;

namespace {

using Node = TrieNode<int>;

/// Names from the root down, of which a model is made: `a/b` is `{"a", "b"}`.
using Names = std::vector<std::string>;

Path pathOf(const Names& names)
{
    return PathSegment(PathComponent::toComponents(names), 1, '/');
}

bool startsWith(const Names& names, const Names& prefix)
{
    return names.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), names.begin());
}

/// The same questions answered by looking at every stored path.
struct Model
{
    [[nodiscard]] bool below(const Names& names, bool inclusive) const
    {
        return !names.empty() && std::any_of(values.begin(), values.end(), [&](const auto& value) {
            return startsWith(value.first, names) && (inclusive || value.first != names);
        });
    }

    [[nodiscard]] bool above(const Names& names, bool inclusive) const
    {
        return std::any_of(values.begin(), values.end(), [&](const auto& value) {
            return startsWith(names, value.first) && (inclusive || value.first != names);
        });
    }

    [[nodiscard]] std::size_t nodes() const
    {
        std::set<Names> prefixes{{}};
        for (const auto& value : values) {
            for (auto names = value.first; !names.empty(); names.pop_back()) {
                prefixes.insert(names);
            }
        }
        return prefixes.size();
    }

    [[nodiscard]] int commonDepth() const
    {
        if (values.empty()) {
            return -1;
        }
        auto common = values.begin()->first;
        common.pop_back();
        for (const auto& [names, value] : values) {
            while (!startsWith(names, common) || names == common) {
                common.pop_back();
            }
        }
        return static_cast<int>(common.size());
    }

    std::map<Names, int> values;
};

/// Names of which some have one sibling and others many.
Names randomNames(test::Random& random)
{
    Names names(1 + random.below(4));
    for (auto& name : names) {
        name = std::to_string(random.below(random.below(4) == 0 ? 60 : 2));
    }
    return names;
}

void expectSame(const Trie<int>& trie, const Model& model, const Names& names)
{
    const auto asked = pathOf(names);
    const auto stored = model.values.find(names);
    const auto found = trie.find(asked);
    ASSERT_EQ(found != nullptr, stored != model.values.end());
    if (found) {
        ASSERT_EQ(found->data(), stored->second);
    }
    ASSERT_EQ(trie.contains(asked), found != nullptr);
    ASSERT_EQ(trie.node(asked) != nullptr, model.below(names, true));
    ASSERT_EQ(trie.containsDescendant(asked), model.below(names, false));
    ASSERT_EQ(trie.containsDescendantInclusive(asked), model.below(names, true));
    ASSERT_EQ(trie.containsAncestor(asked), model.above(names, false));
    ASSERT_EQ(trie.containsAncestorInclusive(asked), model.above(names, true));
}

/// What a move of the node at `from` does to the model, which has one.
void moveIn(Model& model, const Names& from, const Names& to)
{
    if (std::equal(from.begin(), from.end() - 1, to.begin(), to.end() - 1) ||
        startsWith(to, from)) {
        return;
    }
    std::map<Names, int> moved;
    for (auto value = model.values.begin(); value != model.values.end();) {
        auto next = std::next(value);
        if (startsWith(value->first, from)) {
            auto names = to;
            names.insert(names.end(), value->first.begin() + static_cast<long>(from.size()),
                         value->first.end());
            moved.emplace(std::move(names), value->second);
            model.values.erase(value);
        }
        value = next;
    }
    std::erase_if(model.values, [&](const auto& value) { return startsWith(value.first, to); });
    model.values.merge(moved);
}

} // namespace

TEST(Trie, RandomChangesGiveWhatTheyGiveOnASetOfStrings)
{
    test::Random random;
    Trie<int> trie;
    Model model;
    for (int step = 0; step < 6'000; ++step) {
        const auto names = randomNames(random);
        const auto target = randomNames(random);
        const auto kind = random.below(100);
        if (kind < 50) {
            trie.add(pathOf(names), step);
            model.values[names] = step;
        } else if (kind < 90) {
            const auto removed = trie.remove(pathOf(names));
            ASSERT_EQ(removed != nullptr, model.values.erase(names) == 1);
            ASSERT_FALSE(removed && removed->hasData());
        } else if (kind < 99) {
            // Somebody may hold what a move replaces.
            const auto held = trie.node(pathOf(Names(names.begin(), names.end() - 1)));
            const auto known = model.below(names, true);
            const auto refused = target != names && startsWith(target, names);
            ASSERT_EQ(trie.move(pathOf(names), pathOf(target)) != nullptr, known && !refused);
            if (known) {
                moveIn(model, names, target);
            }
            ASSERT_NO_FATAL_FAILURE(expectSame(trie, model, target));
        } else if (random.below(10) == 0) {
            trie.clear();
            model.values.clear();
        }
        ASSERT_NO_FATAL_FAILURE(expectSame(trie, model, names));
        ASSERT_NO_FATAL_FAILURE(expectSame(trie, model, randomNames(random)));
        if (step % 50 == 0) {
            ASSERT_EQ(trie.size(), model.nodes());
            ASSERT_EQ(trie.closestCommonAncestor(), model.commonDepth());
        }
    }
}

TEST(Trie, KeepsDataOfAPathWithoutComponentsOnTheRootOutsideThePrefixQuestions)
{
    Trie<int> trie;
    EXPECT_EQ(trie.add(Path(), 1), trie.root());
    EXPECT_TRUE(trie.contains(Path()));
    EXPECT_FALSE(trie.containsAncestor(path("/a")));
    EXPECT_FALSE(trie.containsDescendantInclusive(Path()));
    EXPECT_EQ(trie.closestCommonAncestor(), -1);
    EXPECT_EQ(trie.remove(Path()), trie.root());
    EXPECT_FALSE(trie.contains(Path()));
}

TEST(Trie, MovesASubtreeButNotWithinItsParent)
{
    Trie<int> trie;
    trie.add(path("/a/b/c"), 1);
    const auto moved = trie.move(path("/a/b"), path("/x/y"));
    EXPECT_EQ(trie.move(path("/x/y"), path("/x/z")), moved);
    EXPECT_TRUE(trie.contains(path("/x/y/c")));
    EXPECT_EQ(trie.node(path("/x/z")), nullptr);

    EXPECT_EQ(trie.move(path("/q"), path("/new/q")), nullptr);
    EXPECT_EQ(trie.size(), 4U);
}

TEST(Trie, MovesANodeIntoThePlaceOfAnAncestorThatItLeavesEmpty)
{
    for (const auto held : {false, true}) {
        Trie<int> trie;
        trie.add(path("/a/b/c"), 1);
        trie.add(path("/a/b/c/d"), 2);
        const auto parent = held ? trie.node(path("/a/b")) : nullptr;
        const auto moved = trie.move(path("/a/b/c"), path("/a/b"));
        EXPECT_EQ(trie.find(path("/a/b")), moved);
        EXPECT_TRUE(trie.contains(path("/a/b/d")));
        EXPECT_EQ(trie.size(), 4U);
        EXPECT_EQ(trie.move(path("/a"), path("/a/b/e")), nullptr);
        EXPECT_EQ(trie.size(), 4U);
    }
}

TEST(Trie, ForgetsHowManyChildrenItOnceHad)
{
    constexpr int kMost = 100'000;
    const auto child = [](int i) { return path("/a") + std::to_string(i); };
    Trie<int> shrunk;
    for (int i = 0; i < kMost; ++i) {
        shrunk.add(child(i), i);
    }
    for (int i = 1; i < kMost; ++i) {
        shrunk.remove(child(i));
    }
    Trie<int> fresh;
    fresh.add(child(0), 0);
    const auto timed = [](const Trie<int>& trie) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < 1'000; ++i) {
            EXPECT_EQ(trie.closestCommonAncestor(), 1);
        }
        return std::chrono::steady_clock::now() - start;
    };
    const auto least = timed(fresh);
    EXPECT_LT(timed(shrunk), 500 * least);
}

TEST(Trie, OfOneVeryDeepPathTakesNoStackForItsDepth)
{
    constexpr int kDepth = 200'000;
    const Path deep = PathSegment(std::vector<PathComponent>(kDepth, PathComponent("n")), 1, '/');
    Trie<int> trie;
    trie.add(deep, 1);
    EXPECT_EQ(trie.size(), kDepth + 1U);
    EXPECT_EQ(trie.closestCommonAncestor(), kDepth - 1);
    EXPECT_TRUE(trie.containsDescendant(deep.head(1)) && !trie.containsAncestor(deep));
    trie.move(path("/n"), path("/m/n"));
    EXPECT_EQ(trie.size(), kDepth + 2U);

    // The lower half outlives the rest.
    auto held = trie.root();
    for (int depth = 0; depth < kDepth / 2; ++depth) {
        held = (*held)[held->childrenComponents().front()];
    }
    trie.clear();
    EXPECT_EQ(trie.size(), 1U);
    EXPECT_EQ(held->treeSize(), kDepth / 2 + 2U);
    held.reset();

    trie.add(deep, 1);
    trie.remove(deep);
    EXPECT_TRUE(trie.empty());
    trie.add(deep, 1);
    const Trie<int> last = std::move(trie);
    EXPECT_TRUE(last.contains(deep));
}

TEST(TrieNode, RemovesByComponentWhateverNodeHangsThere)
{
    const auto parent = std::make_shared<Node>();
    const auto child = std::make_shared<Node>(PathComponent("a"));
    const auto other = std::make_shared<Node>(PathComponent("a"));
    parent->add(child);
    parent->add(other);
    EXPECT_EQ((*parent)[PathComponent("a")], other);
    EXPECT_EQ(child->parent(), parent);

    parent->remove(child);
    EXPECT_TRUE(parent->empty());
    EXPECT_EQ(child->parent(), nullptr);
    EXPECT_EQ(other->parent(), parent);
    parent->remove(other);
    EXPECT_EQ(other->parent(), nullptr);
}

TEST(TrieNode, IsRekeyedByRenameAndByMoveToAnotherParent)
{
    const auto root = std::make_shared<Node>();
    const auto other = std::make_shared<Node>();
    for (const auto* name : {"a", "b", "c"}) {
        root->add(std::make_shared<Node>(PathComponent(name)));
    }
    const auto node = (*root)[PathComponent("b")];
    node->rename(PathComponent("d"));
    EXPECT_EQ((*root)[PathComponent("d")], node);
    EXPECT_FALSE(root->contains(PathComponent("b")));

    node->move(PathComponent("e"), root);
    EXPECT_EQ(node->component(), PathComponent("d"));
    node->move(PathComponent("e"), other);
    EXPECT_EQ((*other)[PathComponent("e")], node);
    EXPECT_EQ(node->parent(), other);
    EXPECT_THAT(root->childrenComponents(), ElementsAre(PathComponent("a"), PathComponent("c")));
}

TEST(TrieNode, KeepsTheValueOfClearedData)
{
    Node node(PathComponent("a"));
    EXPECT_EQ(node.data(), 0);
    node.setData(3);
    node.clearData();
    EXPECT_FALSE(node.hasData());
    EXPECT_EQ(node.data(), 3);
}

TEST(TrieNode, ClearedStillHangsInItsParentUnderItsOldComponent)
{
    Trie<int> trie;
    trie.add(path("/a/b/c"), 1);
    const auto node = trie.node(path("/a/b"));
    node->clear();
    EXPECT_FALSE(node->component());
    EXPECT_EQ(node->parent(), nullptr);
    EXPECT_TRUE(node->empty());
    EXPECT_EQ(trie.node(path("/a/b")), node);
    EXPECT_FALSE(trie.contains(path("/a/b/c")));
}

TEST(TrieNode, ThatNoSharedPointerOwnsRefusesChildrenAndMoves)
{
    const auto child = std::make_shared<Node>(PathComponent("a"));
    Node loose;
    EXPECT_THROW(loose.add(child), std::bad_weak_ptr);
    EXPECT_TRUE(loose.empty());
    EXPECT_THROW(loose.rename(PathComponent("b")), std::bad_weak_ptr);
    EXPECT_THROW(loose.move(PathComponent("b"), child), std::bad_weak_ptr);
}
