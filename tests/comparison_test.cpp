#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <unordered_map>
#include <unordered_set>

#include "kiv/attributes.h"
#include "kiv/hierarchy.h"
#include "kiv/host/comparison.h"
#include "kiv/host/outline.h"
#include "kiv/object3d.h"
#include "kiv/sceneItemOps.h"
#include "kiv/transform3d.h"

#include "memoryScene.h"
#include "random.h"

using namespace Kiv_v4;

namespace {

using host::Difference;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;
using Kind = Difference::Kind;

/// Two trees of one run-time, equal at first.
struct Comparison : test::MemoryScene
{
    SceneItem::Ptr make(const SceneItem::Ptr& parent, const std::string& type,
                        const std::string& name, int id)
    {
        const auto item = model.make(parent->path(), type, name);
        std::dynamic_pointer_cast<AttributeInt>(
            Attributes::attributes(item)->addAttribute(Attribute::kInt, "id"))
            ->set(id);
        return item;
    }

    /// The same items under both tops, with names of their own.
    void grow(test::Random& random, int count)
    {
        std::vector<std::pair<SceneItem::Ptr, SceneItem::Ptr>> made{{before, after}};
        for (auto i = 0; i < count; ++i) {
            const auto parents = random.of(made);
            const auto* type = random.below(2) == 0 ? "mesh" : "group";
            const auto name = "i" + std::to_string(i);
            made.emplace_back(make(parents.first, type, name, i),
                              make(parents.second, type, name, i));
        }
    }

    /// The part of the path that lies under the top.
    static std::string under(const SceneItem::Ptr& top, const Path& path)
    {
        const auto text = PathString::string(path);
        return path.empty() ? "" : text.substr(PathString::string(top->path()).size());
    }

    std::string text(const Difference& difference) const
    {
        return std::string(textOf(difference.kind)) + " " + under(before, difference.before) + " " +
               under(after, difference.after) + " " + difference.name;
    }

    std::vector<std::string> texts() const
    {
        std::vector<std::string> all;
        for (const auto& difference : host::compare(before, after)) {
            all.push_back(text(difference));
        }
        return all;
    }

    static std::vector<Path> pathsUnder(const SceneItem::Ptr& top)
    {
        std::vector<Path> paths;
        host::walk(top, std::numeric_limits<std::size_t>::max(), [&](const auto& item, auto) {
            paths.push_back(item->path());
            return true;
        });
        return paths;
    }

    const SceneItem::Ptr before = model.make(model.root(), "group", "before");
    const SceneItem::Ptr after = model.make(model.root(), "group", "after");
};

/// Edits of items of which none is at or under another one that is edited.
class Edits
{
public:
    Edits(Comparison& trees, test::Random& random) : _trees(trees), _random(random) {}

    /// Edits one item, and gives what that makes different.
    std::string edit(int number)
    {
        const auto paths = Comparison::pathsUnder(_trees.after);
        Path path;
        for (auto tries = 0; tries < 50; ++tries) {
            path = _random.of(paths);
            if (path != _trees.after->path() && isUntouched(path)) {
                return edit(_trees.model.item(path), number);
            }
        }
        return {};
    }

private:
    [[nodiscard]] bool isUntouched(const Path& path) const
    {
        return std::none_of(_touched.begin(), _touched.end(), [&](const Path& other) {
            return path.isAtOrBelow(other) || other.isAtOrBelow(path);
        });
    }

    std::string edit(const SceneItem::Ptr& item, int number)
    {
        const auto place = Comparison::under(_trees.after, item->path());
        const auto name = "new" + std::to_string(number);
        _touched.push_back(item->path());
        switch (_random.below(6)) {
        case 0: {
            const auto now = SceneItemOps::sceneItemOps(item)->renameItem(PathComponent(name)).item;
            _touched.push_back(now->path());
            return "renamed " + place + " " + Comparison::under(_trees.after, now->path()) + " ";
        }
        case 1:
            SceneItemOps::sceneItemOps(item)->deleteItem();
            return "removed " + place + "  ";
        case 2: {
            const auto made = _trees.make(item, "camera", name, 1000 + number);
            return "added  " + Comparison::under(_trees.after, made->path()) + " ";
        }
        case 3:
            std::dynamic_pointer_cast<AttributeInt>(Attributes::attributes(item)->attribute("id"))
                ->set(5000 + number);
            return "changed " + place + " " + place + " id";
        case 4: {
            const auto now = moved(item);
            return now ? "moved " + place + " " + Comparison::under(_trees.after, now->path()) + " "
                       : "";
        }
        default:
            Transform3d::transform3d(item)->translate(1, 2, number);
            return "changed " + place + " " + place + " translation";
        }
    }

    /// Under the top, if it is not there already.
    SceneItem::Ptr moved(const SceneItem::Ptr& item)
    {
        if (item->path().pop() == _trees.after->path()) {
            return nullptr;
        }
        Hierarchy::hierarchy(_trees.after)->insertChildCmd(item, nullptr)->execute();
        const auto path = _trees.after->path() + item->path().back();
        _touched.push_back(path);
        return _trees.model.item(path);
    }

    Comparison& _trees;
    test::Random& _random;
    std::vector<Path> _touched;
};

TEST_F(Comparison, OfATreeWithItselfOrItsLikeIsEmpty)
{
    test::Random random;
    grow(random, 200);
    EXPECT_THAT(host::compare(before, before), IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(Comparison, OfATreeWithItselfEditedTellsTheEditsAndNoMore)
{
    test::Random random;
    grow(random, 150);
    Edits edits(*this, random);
    std::vector<std::string> expected;
    for (auto number = 0; number < 25; ++number) {
        if (const auto text = edits.edit(number); !text.empty()) {
            expected.push_back(text);
        }
    }
    EXPECT_THAT(texts(), UnorderedElementsAreArray(expected));
}

/// Whatever was edited, the differences lead from the one tree to the other.
TEST_F(Comparison, ToldOfAnyTwoTreesTurnsTheOneIntoTheOther)
{
    test::Random random;
    for (auto round = 0; round < 20; ++round) {
        const auto build = [&](const SceneItem::Ptr& top) {
            std::vector<SceneItem::Ptr> made{top};
            for (auto i = 0; i < 40; ++i) {
                const std::string name(1, static_cast<char>('a' + random.below(8)));
                const auto parent = random.of(made)->path();
                if (!model.item(parent + name)) {
                    made.push_back(model.make(parent, random.below(2) ? "mesh" : "group", name));
                }
            }
        };
        for (const auto& top : {before, after}) {
            for (const auto& child : Hierarchy::hierarchy(top)->children()) {
                SceneItemOps::sceneItemOps(child)->deleteItem();
            }
            build(top);
        }
        std::unordered_map<Path, Path> placed; // what is told to be elsewhere
        std::unordered_set<Path> removed;
        std::unordered_set<Path> result;
        std::vector<Path> added;
        std::unordered_set<Path> taken;
        for (const auto& difference : host::compare(before, after)) {
            if (difference.kind == Kind::Moved || difference.kind == Kind::Renamed) {
                placed[difference.before] = difference.after;
                taken.insert(difference.after);
            } else if (difference.kind == Kind::Removed) {
                removed.insert(difference.before);
            } else if (difference.kind == Kind::Added) {
                added.push_back(difference.after);
            }
        }
        std::unordered_map<Path, Path> now{{before->path(), after->path()}};
        for (const auto& path : pathsUnder(before)) {
            if (const auto elsewhere = placed.find(path); elsewhere != placed.end()) {
                now[path] = elsewhere->second;
            } else if (path != before->path() && removed.count(path) == 0 &&
                       now.count(path.pop()) != 0) {
                now[path] = now.at(path.pop()) + path.back();
            }
        }
        for (const auto& [was, is] : now) {
            EXPECT_TRUE(result.insert(is).second) << PathString::string(is);
        }
        for (const auto& top : added) {
            for (const auto& path : pathsUnder(model.item(top))) {
                result.insert(path);
            }
        }
        const auto all = pathsUnder(after);
        EXPECT_EQ(result, std::unordered_set<Path>(all.begin(), all.end()));
    }
}

TEST_F(Comparison, TellsARenameThatHidesOtherEdits)
{
    for (const auto& top : {before, after}) {
        const auto lamp = make(top, "group", "lamp", 1);
        make(lamp, "mesh", "bulb", 2);
        make(lamp, "mesh", "shade", 3);
        make(top, "mesh", "floor", 4);
    }
    SceneItemOps::sceneItemOps(at("/world/after/lamp/bulb"))->deleteItem();
    SceneItemOps::sceneItemOps(at("/world/after/lamp"))->renameItem(PathComponent("light"));
    const auto hierarchy = Hierarchy::hierarchy(after);
    hierarchy->reorder({at("/world/after/floor"), at("/world/after/light")});
    Object3d::object3d(at("/world/after/light/shade"))->setVisibility(false);
    EXPECT_THAT(texts(),
                ElementsAre("reordered   ", "renamed /lamp /light ", "removed /lamp/bulb  ",
                            "changed /lamp/shade /light/shade visible"));
}

TEST_F(Comparison, TellsARenameInAnItemThatHasMoved)
{
    for (const auto& top : {before, after}) {
        const auto lamp = make(top, "group", "lamp", 1);
        make(lamp, "mesh", "bulb", 2);
        make(top, "group", "hall", 3);
    }
    model.move(at("/world/after/lamp")->path(), at("/world/after/hall")->path());
    model.rename(at("/world/after/hall/lamp/bulb")->path(), "light");
    EXPECT_THAT(texts(),
                ElementsAre("moved /lamp /hall/lamp ", "renamed /lamp/bulb /hall/lamp/light "));
}

TEST_F(Comparison, TakesNumbersForTheSameWithinTheTolerance)
{
    for (const auto& top : {before, after}) {
        make(top, "mesh", "a", 1);
    }
    Transform3d::transform3d(at("/world/after/a"))->translate(0.001, 0, 0);
    EXPECT_EQ(texts().size(), 1u);
    host::ComparisonOptions options;
    options.tolerance = 0.01;
    EXPECT_THAT(host::compare(before, after, options), IsEmpty());
    options = {};
    options.values = false;
    EXPECT_THAT(host::compare(before, after, options), IsEmpty());
    options.values = true;
    options.counts = [](const std::string& group, const std::string&) {
        return group != "transform";
    };
    EXPECT_THAT(host::compare(before, after, options), IsEmpty());

    const auto nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(host::isSame(nan, nan, 0));
    EXPECT_FALSE(host::isSame(1, 1.0F, 1)) << "of different types";
    EXPECT_TRUE(host::isSame(1e9, 1e9 + 1, 1e-6)) << "a share of the larger";
}

} // namespace
